#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `info`, which reports what files contain.
/// @param run  set when the command line selects this command.
void AddInfoCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
