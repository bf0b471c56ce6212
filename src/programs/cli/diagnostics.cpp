#include "programs/cli/diagnostics.h"

#include <atomic>
#include <cstdio>
#include <iostream>
#include <new>

#include <unistd.h>

#include "base/file_descriptor.h"
#include "base/terminal_text.h"

namespace zel::cli {

void PrintLine(const std::string& text) {
    std::cout << base::TerminalText(text) << std::endl;
}

void PrintLines(const std::string& text) {
    std::cout << base::TerminalLines(text) << std::flush;
}

void PrintError(std::string_view text) noexcept {
    try {
        std::fprintf(stderr, "zeltrans: %s\n", base::TerminalText(text).c_str());
    } catch (const std::bad_alloc&) {
        PrintOutOfMemory();
    }
}

void PrintOutOfMemory() noexcept {
    // Once, although several threads may find none, and the end of the program once more.
    static std::atomic<bool> printed{false};
    if (printed.exchange(true)) return;
    constexpr std::string_view kLine = "zeltrans: out of memory\n";
    base::WriteFully(STDERR_FILENO, kLine);
}

void PrintErrorLines(const std::string& text) {
    std::fprintf(stderr, "zeltrans: %s\n", base::TerminalLines(text).c_str());
}

void PrintNote(const std::string& text) {
    std::fprintf(stderr, "note: %s\n", base::TerminalText(text).c_str());
}

}  // namespace zel::cli
