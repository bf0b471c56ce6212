#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `font`, which reads one font without a message and writes its trace and a sheet of its glyphs.
/// @param run  set when the command line selects this command.
void AddFontCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
