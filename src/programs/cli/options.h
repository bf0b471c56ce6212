#pragma once

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace zel::cli {

/// The error for an empty path, else empty; for CLI::Option::check.
std::string CheckPath(const std::string& path);

/// Adds a required argument.
CLI::Option& AddArgument(CLI::App& command, const std::string& name, std::string& value,
                         const std::string& description);
/// Adds a required argument that takes one or more values.
CLI::Option& AddArgument(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                         const std::string& description);

/// Adds an option that must be given.
void AddRequired(CLI::App& command, const std::string& name, std::string& value, const std::string& type,
                 const std::string& description);

/// Adds an option that takes a text.
void AddText(CLI::App& command, const std::string& name, std::optional<std::string>& text, const std::string& type,
             const std::string& description);

/// Adds an option that takes a path, which must not be empty.
void AddPath(CLI::App& command, const std::string& name, std::optional<std::string>& path, const std::string& type,
             const std::string& description);

/// Adds an option that takes an integer.
/// @param max  the largest valid value; the smallest is 1.
void AddInteger(CLI::App& command, const std::string& name, int& value, int max, const std::string& type,
                const std::string& description);

/// Adds --json.
void AddJson(CLI::App& command, bool& json, const std::string& description);

/// Adds an example to the help of the command.
void AddExample(CLI::App& command, const std::string& example);

}  // namespace zel::cli
