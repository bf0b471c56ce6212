#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "programs/cli/command_disk.h"

namespace zel::test {

/// Whether a program that checks JSON against schemas is installed.
#ifdef ZELTRANS_JSON_CHECKER
inline constexpr bool kCanCheckJson = true;
#else
inline constexpr bool kCanCheckJson = false;
#define ZELTRANS_JSON_CHECKER ""
#endif

/// JSON values by the form that they should have, a name of docs/schemas.
using JsonForms = std::multimap<std::string, nlohmann::ordered_json>;

/// Adds each line of a text as a value.
/// @throws nlohmann::json::exception for a line that is none.
inline void AddLines(JsonForms& values, const std::string& form, const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) values.emplace(form, nlohmann::ordered_json::parse(line));
}

/// One line for each value that does not have its form, and for each fault of the schemas. The checker runs in `disk`.
inline std::string FaultsOf(const JsonForms& values, const CommandDisk& disk) {
    std::ofstream lines(disk / "run.values");
    for (const auto& [form, value] : values) lines << form << '\t' << value.dump() << '\n';
    lines.close();
    const std::string command = CommandDisk::Quoted(ZELTRANS_JSON_CHECKER) + " -I " +
                                CommandDisk::Quoted(ZELTRANS_JSON_TESTS "/check_json.py") + " " +
                                CommandDisk::Quoted(ZELTRANS_SCHEMAS) + " <run.values";
    const CommandResult result = disk.Shell(command);
    return result.exit_code == 0 ? result.out : result.err + "the checker failed\n";
}

}  // namespace zel::test
