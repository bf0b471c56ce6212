#pragma once

#include "programs/cli/arguments.h"

namespace zel::cli {

/// Adds `settings`: lists, tells, changes and removes what the module has stored.
/// @param run  set when the command was called with right arguments.
void AddSettingsCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
