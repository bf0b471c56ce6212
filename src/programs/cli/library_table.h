#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/library/library.h"

namespace zel::cli {

/// Text that is safe to print on a terminal: a question mark for each control character, line breaks included, and for
/// each invalid byte of UTF-8.
std::string TerminalText(std::string_view text);

/// The file name of a message number, ".0012".
std::string NumberName(int number);

/// "message", "RGBA object" or "RGBA background".
std::string KindName(library::RecordingKind kind);

/// "1 recording", "2 recordings".
std::string CountOf(std::size_t count, const std::string& what);

/// One line per recording: number, disk (if any has a name), kind, number of warnings, first line of text.
std::string LibraryTable(const std::vector<library::LibraryEntry>& entries);

}  // namespace zel::cli
