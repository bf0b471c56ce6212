#pragma once

#include "programs/cli/arguments.h"

namespace zel::cli {

/// Adds `sample`: the demonstration disk.
/// @param run  set when the command was called with right arguments.
void AddSampleCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
