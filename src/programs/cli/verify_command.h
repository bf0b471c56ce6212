#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `verify`, which holds files against their formats.
/// @param run  set when the command line selects this command.
void AddVerifyCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
