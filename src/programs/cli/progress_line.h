#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace zel::cli {

/// Whether standard output is a terminal on which a line can be redrawn.
bool CanRedraw();

/// The line of progress on a terminal. It is redrawn with carriage returns and blanks alone, without escape codes, and
/// is cut where the terminal's line ends.
class ProgressLine {
  public:
    /// Whether to draw again now: the line is redrawn at most ten times a second.
    bool IsDue() const;
    void Draw(const std::string& text);
    /// Removes the line, if one is drawn.
    void Clear();

  private:
    /// Characters on the terminal.
    std::size_t m_drawn = 0;
    std::chrono::steady_clock::time_point m_last_drawing;
};

}  // namespace zel::cli
