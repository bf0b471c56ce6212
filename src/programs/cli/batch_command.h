#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `batch`, which imports a range of messages through the module's batch dialog and records them.
/// @param run  set when the command line selects this command.
void AddBatchCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
