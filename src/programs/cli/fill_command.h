#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds "fill": sets texts into the fields of a message.
void AddFillCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
