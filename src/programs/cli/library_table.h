#pragma once

#include <string>
#include <vector>

#include "host/library/library.h"

namespace zel::cli {

/// "message", "RGBA object" or "RGBA background".
std::string KindName(library::RecordingKind kind);

/// One line per recording: number, disk (if any has a name), kind, number of warnings, first line of text.
std::string LibraryTable(const std::vector<library::LibraryEntry>& entries);

}  // namespace zel::cli
