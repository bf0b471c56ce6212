#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `thumbnail`, which file managers call for a small picture of a message or a font.
/// @param run  set when the command line selects this command.
void AddThumbnailCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
