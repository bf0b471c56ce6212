#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `export`, which writes recorded messages as files, through the module's batch export.
/// @param run  set when the command line selects this command.
void AddExportCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
