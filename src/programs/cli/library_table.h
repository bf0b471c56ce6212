#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/library/library.h"

namespace zel::cli {

/// UTF-8 as a terminal can show it: line breaks, other control characters and what is no UTF-8 as a question mark each.
std::string TerminalText(std::string_view text);

/// A message number as its file is named, ".0012".
std::string NumberName(int number);

/// "message", "RGBA object" or "RGBA background".
std::string KindWords(library::RecordingKind kind);

/// "1 recording", "2 recordings".
std::string CountOf(std::size_t count, const std::string& what);

/// A line for each recording: its number and kind, its disk when one has a name, its first line of text, and how many
/// warnings it has.
std::string LibraryTable(const std::vector<library::LibraryEntry>& entries);

}  // namespace zel::cli
