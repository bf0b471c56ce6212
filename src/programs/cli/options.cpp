#include "programs/cli/options.h"

#include <CLI/App.hpp>

#include "programs/cli/diagnostics.h"

namespace zel::cli {

std::string CheckPath(const std::string& path) {
    return path.empty() ? "the path is empty" : std::string();
}

namespace {

std::string CheckNotStream(const std::string& path) {
    return path == "-" ? "it can't be standard output; write ./- for a file of that name" : std::string();
}

}  // namespace

CLI::Option& AddArgument(CLI::App& command, const std::string& name, std::string& value,
                         const std::string& description) {
    return *command.add_option(name, value, description)->required()->type_name("");
}

CLI::Option& AddArgument(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                         const std::string& description) {
    return *command.add_option(name, values, description)->required()->type_name("");
}

void AddRequired(CLI::App& command, const std::string& name, std::string& value, const std::string& type,
                 const std::string& description) {
    command.add_option(name, value, description)->required()->type_name(type);
}

void AddText(CLI::App& command, const std::string& name, std::optional<std::string>& text, const std::string& type,
             const std::string& description) {
    command.add_option(name, text, description)->type_name(type);
}

void AddPath(CLI::App& command, const std::string& name, std::optional<std::string>& path, const std::string& type,
             const std::string& description) {
    command.add_option(name, path, description)->type_name(type)->check(CheckPath, "");
}

void AddNamedFile(CLI::App& command, const std::string& name, std::optional<std::string>& path,
                  const std::string& description) {
    command.add_option(name, path, description)->type_name("FILE")->check(CheckPath, "")->check(CheckNotStream, "");
}

void AddDirectory(CLI::App& command, const std::string& name, std::optional<std::string>& path,
                  const std::string& description) {
    command.add_option(name, path, description)->type_name("DIR")->check(CheckPath, "")->check(CheckNotStream, "");
}

void AddInteger(CLI::App& command, const std::string& name, int& value, int max, const std::string& type,
                const std::string& description) {
    command.add_option(name, value, description)->type_name(type)->check(CLI::Range(1, max).description(""));
}

void AddVerbosity(CLI::App& command, bool has_details) {
    CLI::Option* const quiet = command.add_flag_callback(
        "-q,--quiet", [] { SetVerbosity(Verbosity::kQuiet); }, "print nothing but errors");
    if (!has_details) return;
    command
        .add_flag_callback(
            "-v,--verbose", [] { SetVerbosity(Verbosity::kVerbose); }, "print details of the work too")
        ->excludes(quiet);
}

void AddStrict(CLI::App& command, bool& strict) {
    command.add_flag("--strict", strict, "end with exit code 1 if there are warnings");
}

void Require(const CLI::App& command, const std::string& option, bool is_met, const std::string& what) {
    if (command.count(option) != 0 && !is_met) throw CLI::RequiresError(option, what);
}

void ReserveStandardOutputFor(std::initializer_list<OutputOption> outputs, bool json) {
    std::string first = json ? "--json" : "";
    for (const OutputOption& output : outputs) {
        if (*output.path != "-") continue;
        const std::string name = std::string(output.name) + " -";
        if (!first.empty()) throw CLI::ExcludesError(first, name);
        first = name;
    }
    if (!first.empty()) ReserveStandardOutput();
}

void AddJson(CLI::App& command, bool& json, const std::string& description) {
    command.add_flag("--json", json, description);
}

void AddExact(CLI::App& command, bool& exact, const std::string& output) {
    command.add_flag(
        "--exact", exact,
        "with " + output + ": keep all bytes of the file that nothing reads, even more than 64 KiB of them");
}

void AddExample(CLI::App& command, const std::string& example) {
    command.footer("Example:\n  " + example);
}

}  // namespace zel::cli
