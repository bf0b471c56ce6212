#pragma once

#include <chrono>
#include <string>

namespace zel::cli {

/// Whether standard output is a terminal, so that progress is shown in one line that is redrawn.
bool IsTerminal();

/// The line of progress on a terminal.
class ProgressLine {
  public:
    /// Whether to draw again now: the line is redrawn at most ten times a second.
    bool IsDue() const;
    void Draw(const std::string& text);
    /// Removes the line, if one is drawn.
    void Clear();

  private:
    bool m_drawn = false;
    std::chrono::steady_clock::time_point m_last_drawing;
};

}  // namespace zel::cli
