#pragma once

#include "programs/cli/arguments.h"

namespace zel::cli {

/// Adds `font`: one font file, read without a message, to a sheet of its glyphs and a trace.
/// @param run  set when the command was called with right arguments.
void AddFontCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
