#include "programs/cli/options.h"

#include <CLI/App.hpp>

namespace zel::cli {

std::string CheckPath(const std::string& path) {
    return path.empty() ? "the path is empty" : std::string();
}

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

void AddInteger(CLI::App& command, const std::string& name, int& value, int max, const std::string& type,
                const std::string& description) {
    command.add_option(name, value, description)->type_name(type)->check(CLI::Range(1, max).description(""));
}

void AddJson(CLI::App& command, bool& json, const std::string& description) {
    command.add_flag("--json", json, description);
}

void AddExample(CLI::App& command, const std::string& example) {
    command.footer("Example:\n  " + example);
}

}  // namespace zel::cli
