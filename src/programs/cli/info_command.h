#pragma once

#include "programs/cli/arguments.h"

namespace zel::cli {

/// Adds `info`: what a file is and what it holds.
/// @param run  set when the command was called with right arguments.
void AddInfoCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
