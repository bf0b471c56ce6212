#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `import`, which imports one message and writes its picture, its document and a trace.
/// @param run  set when the command line selects this command.
void AddImportCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
