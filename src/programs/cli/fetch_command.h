#pragma once

#include "programs/cli/arguments.h"

namespace zel::cli {

/// Adds `fetch`: messages and their fonts from an FTP server.
/// @param run  set when the command was called with right arguments.
void AddFetchCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
