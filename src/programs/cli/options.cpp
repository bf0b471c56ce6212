#include "programs/cli/options.h"

#include <CLI/App.hpp>

namespace zel::cli {

std::string CheckPath(const std::string& path) {
    return path.empty() ? "the path is empty" : std::string();
}

void AddPath(CLI::App& command, const std::string& name, std::optional<std::string>& path, const std::string& type,
             const std::string& description) {
    command.add_option(name, path, description)->type_name(type)->check(CheckPath, "");
}

void AddExample(CLI::App& command, const std::string& example) {
    command.footer("Example:\n  " + example);
}

}  // namespace zel::cli
