#pragma once

#include "programs/cli/arguments.h"

namespace zel::cli {

/// `zeltrans batch`: imports a range of messages through the module's batch dialog, and records what arrives.
void AddBatchCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
