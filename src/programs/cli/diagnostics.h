#pragma once

#include <string>
#include <string_view>

namespace zel::cli {

// The functions that print. Whatever a text contains, it stays in its line and controls no terminal
// (base::TerminalText).

/// Prints a line of results on standard output, at once.
void PrintLine(const std::string& text);

/// Prints results of several lines, each ended by a line break. Names and texts from files must have passed
/// base::TerminalText, so that they don't break a line.
void PrintLines(const std::string& text);

/// Prints "zeltrans: TEXT" on standard error, in one line. If there is no memory for that, the text is "out of memory".
void PrintError(std::string_view text) noexcept;

/// Prints the error that memory has run out. Allocates none.
void PrintOutOfMemory() noexcept;

/// Prints likewise an error of several lines. Foreign texts must have passed base::TerminalText.
void PrintErrorLines(const std::string& text);

/// Prints "note: TEXT" on standard error, in one line: information about a command that succeeds all the same.
void PrintNote(const std::string& text);

}  // namespace zel::cli
