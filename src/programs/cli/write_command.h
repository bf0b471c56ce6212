#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds the command "write".
void AddWriteCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
