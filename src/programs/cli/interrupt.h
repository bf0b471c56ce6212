#pragma once

namespace zel::cli {

/// From now on the first SIGINT or SIGTERM sets WasInterrupted, so that the command can end cleanly; the second ends
/// the program immediately. A signal that was ignored before stays ignored.
void HandleInterrupts();
bool WasInterrupted() noexcept;

}  // namespace zel::cli
