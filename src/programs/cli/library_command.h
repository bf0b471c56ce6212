#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `library`, which lists, searches, shows, merges and removes the recordings of a library.
/// @param run  set when the command line selects this command.
void AddLibraryCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
