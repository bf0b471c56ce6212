#pragma once

#include "programs/cli/command.h"

namespace zel::cli {

/// From now on the first SIGINT or SIGTERM sets WasInterrupted, so that the command can end cleanly; the second ends
/// the program immediately. A signal that was ignored before stays ignored.
void HandleInterrupts();
bool WasInterrupted() noexcept;
/// The exit code of a command that a signal has stopped: 130 for SIGINT, 143 for SIGTERM.
ExitCode InterruptCode() noexcept;

}  // namespace zel::cli
