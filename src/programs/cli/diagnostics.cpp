#include "programs/cli/diagnostics.h"

#include <atomic>
#include <cstdio>
#include <iostream>
#include <new>

#include <unistd.h>

#include "base/file_descriptor.h"
#include "base/terminal_text.h"
#include "base/text.h"

namespace zel::cli {

namespace {

Verbosity g_verbosity = Verbosity::kNormal;
bool g_output_is_reserved = false;
std::size_t g_warnings = 0;

}  // namespace

void SetVerbosity(Verbosity verbosity) noexcept {
    g_verbosity = verbosity;
}

bool IsVerbose() noexcept {
    return g_verbosity == Verbosity::kVerbose;
}

void ReserveStandardOutput() noexcept {
    g_output_is_reserved = true;
}

bool IsSilent() noexcept {
    return g_output_is_reserved || g_verbosity == Verbosity::kQuiet;
}

void PrintLine(const std::string& text) {
    if (!IsSilent()) std::cout << base::TerminalText(text) << std::endl;
}

void PrintLines(const std::string& text) {
    if (!IsSilent()) std::cout << base::TerminalLines(text) << std::flush;
}

void PrintDetail(const std::string& text) {
    if (IsVerbose()) std::fprintf(stderr, "%s\n", base::TerminalText(text).c_str());
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
    if (g_verbosity != Verbosity::kQuiet) std::fprintf(stderr, "note: %s\n", base::TerminalText(text).c_str());
}

void PrintWarning(const std::string& text) {
    ++g_warnings;
    PrintNote(text);
}

ExitCode StrictCode(bool strict) {
    if (!strict || g_warnings == 0) return ExitCode::kDone;
    PrintError(base::Counted(g_warnings, "note") + " taken as a failure because of --strict");
    return ExitCode::kNotDone;
}

}  // namespace zel::cli
