#pragma once

#include "programs/cli/arguments.h"

namespace zel::cli {

/// Adds `import`: one message from its file to a picture, a document and a trace.
/// @param run  set when the command was called with right arguments.
void AddImportCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
