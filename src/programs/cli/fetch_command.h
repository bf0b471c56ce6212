#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// Adds `fetch`, which fetches messages and their fonts from an FTP server.
/// @param run  set when the command line selects this command.
void AddFetchCommand(CLI::App& app, CommandRun& run);

}  // namespace zel::cli
