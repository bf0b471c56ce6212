#pragma once

namespace zel::cli {

/// Takes Ctrl-C, and a polite request to end, as a wish to end cleanly: from now on the first sets WasInterrupted, and
/// a second one ends the program at once.
void HeedInterrupts();
bool WasInterrupted() noexcept;

}  // namespace zel::cli
