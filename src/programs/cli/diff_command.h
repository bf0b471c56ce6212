#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `diff`, which compares two messages, fonts, disks or libraries. Its exit codes are 0 for the same, 1 for
/// different, and 2 for what can't be compared.
/// @param run  set when the command line selects this command.
void AddDiffCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
