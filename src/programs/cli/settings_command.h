#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `settings`, which lists, prints, changes and removes the settings that the module stores.
/// @param run  set when the command line selects this command.
void AddSettingsCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
