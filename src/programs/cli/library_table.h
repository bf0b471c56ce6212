#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/library/library.h"

namespace zel::cli {

/// Text that is safe to print on a terminal: a question mark for each control character, line breaks included, and for
/// each invalid byte of UTF-8.
std::string TerminalText(std::string_view text);

/// "message", "RGBA object" or "RGBA background".
std::string KindName(library::RecordingKind kind);

/// One line per recording: number, disk (if any has a name), kind, number of warnings, first line of text.
std::string LibraryTable(const std::vector<library::LibraryEntry>& entries);

}  // namespace zel::cli
