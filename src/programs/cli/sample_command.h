#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `sample`, which writes the demonstration disk.
/// @param run  set when the command line selects this command.
void AddSampleCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
