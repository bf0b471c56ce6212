#include "programs/cli/progress_line.h"

#include <iostream>

#include <unistd.h>

#include "base/terminal_text.h"

namespace zel::cli {

namespace {

constexpr std::chrono::milliseconds kMinInterval{100};
constexpr char kEraseLine[] = "\r\x1b[K";

}  // namespace

bool IsTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

bool ProgressLine::IsDue() const {
    return std::chrono::steady_clock::now() - m_last_drawing >= kMinInterval;
}

void ProgressLine::Draw(const std::string& text) {
    m_last_drawing = std::chrono::steady_clock::now();
    m_drawn = true;
    std::cout << kEraseLine << base::TerminalText(text) << std::flush;
}

void ProgressLine::Clear() {
    if (m_drawn) std::cout << kEraseLine << std::flush;
    m_drawn = false;
}

}  // namespace zel::cli
