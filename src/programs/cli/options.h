#pragma once

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace zel::cli {

/// The error for an empty path, else empty; for CLI::Option::check.
std::string CheckPath(const std::string& path);

/// Adds an option that takes a path, which must not be empty.
void AddPath(CLI::App& command, const std::string& name, std::optional<std::string>& path, const std::string& type,
             const std::string& description);

/// Adds an example to the help of the command.
void AddExample(CLI::App& command, const std::string& example);

}  // namespace zel::cli
