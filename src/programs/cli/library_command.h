#pragma once

#include "programs/cli/arguments.h"

namespace zel::cli {

/// Adds `library`: lists, searches, shows, merges and removes the recordings of a library.
/// @param run  set when the command was called with right arguments.
void AddLibraryCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
