#include "programs/cli/progress_line.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include <unistd.h>

#include "base/terminal_text.h"
#include "base/text_columns.h"
#include "base/utf8.h"
#include "programs/cli/terminal_width.h"

namespace zel::cli {

namespace {

constexpr std::chrono::milliseconds kMinInterval{100};

/// The beginning of a text that fits, with an ellipsis if that is not all of it.
std::string Fitting(std::string text, std::size_t width) {
    if (base::CharacterCount(text) <= width) return text;
    constexpr std::string_view kEllipsis = "...";
    if (width < kEllipsis.size()) return {};
    std::size_t end = 0;
    for (std::size_t n = 0; n < width - kEllipsis.size(); ++n)
        end += base::FirstCharacter(std::string_view(text).substr(end)).size;
    return text.substr(0, end).append(kEllipsis);
}

}  // namespace

bool CanRedraw() {
    const char* const kind = std::getenv("TERM");
    return isatty(STDOUT_FILENO) == 1 && kind != nullptr && std::string_view(kind) != "dumb";
}

bool ProgressLine::IsDue() const {
    return std::chrono::steady_clock::now() - m_last_drawing >= kMinInterval;
}

void ProgressLine::Draw(const std::string& text) {
    m_last_drawing = std::chrono::steady_clock::now();
    // The last column stays free: some terminals begin a new line behind it.
    const std::string line = Fitting(base::TerminalText(text), TerminalWidth() - 1);
    const std::size_t length = base::CharacterCount(line);
    std::cout << '\r' << line << std::string(m_drawn > length ? m_drawn - length : 0, ' ') << std::flush;
    m_drawn = std::max(length, m_drawn);
}

void ProgressLine::Clear() {
    if (m_drawn != 0) std::cout << '\r' << std::string(m_drawn, ' ') << '\r' << std::flush;
    m_drawn = 0;
}

}  // namespace zel::cli
