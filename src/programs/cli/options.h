#pragma once

#include <initializer_list>
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

/// Adds an option that takes the path of a file which can't be standard output, such as a library.
void AddNamedFile(CLI::App& command, const std::string& name, std::optional<std::string>& path,
                  const std::string& description);
/// Adds an option that takes the path of a directory.
void AddDirectory(CLI::App& command, const std::string& name, std::optional<std::string>& path,
                  const std::string& description);

/// Adds an option that takes an integer.
/// @param max  the largest valid value; the smallest is 1.
void AddInteger(CLI::App& command, const std::string& name, int& value, int max, const std::string& type,
                const std::string& description);

/// Adds --quiet and, if there are details, --verbose.
void AddVerbosity(CLI::App& command, bool has_details);

/// Adds --strict.
void AddStrict(CLI::App& command, bool& strict);

/// Checks an option that needs something else to have an effect.
/// @param is_met  whether the command line has `what`, such as "--png".
/// @throws CLI::RequiresError if the option is given without it.
void Require(const CLI::App& command, const std::string& option, bool is_met, const std::string& what);

/// An option for an output, with its value.
struct OutputOption {
    const char* name;
    const std::optional<std::string>* path;
};
/// Reserves standard output if one of the outputs is "-", or for JSON.
/// @throws CLI::ExcludesError if it would have several outputs.
void ReserveStandardOutputFor(std::initializer_list<OutputOption> outputs, bool json = false);

/// Adds --json.
void AddJson(CLI::App& command, bool& json, const std::string& description);

/// Adds --exact, for documents. @param output  the option that writes them.
void AddExact(CLI::App& command, bool& exact, const std::string& output);

/// Adds an example to the help of the command.
void AddExample(CLI::App& command, const std::string& example);

}  // namespace zel::cli
