#pragma once

#include <cstdio>
#include <span>
#include <string>

#include "programs/cli/run_program.h"

namespace zel::cli {

/// The commands with their arguments and options as JSON, from which the manual pages and the completions are made. For
/// each command: "name", "description", "footer", "arguments" and "options", each with its "names", "value", "choices",
/// "description", "required" and "repeated", and "commands".
std::string DescribeCommands(std::span<const NamedCommand> commands);

/// The entry point of the library with all commands that writes this.
inline constexpr char kDescriptionEntry[] = "DescribeAllCommands";
using DescribeAllCommandsFunction = void (*)(std::FILE* out);

}  // namespace zel::cli
