#pragma once

#include "programs/cli/arguments.h"

namespace zel::cli {

/// `zeltrans export`: runs the module's batch export over a library, and writes what it holds as files.
void AddExportCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
