#pragma once

#include <string>

#include "inspect/report.h"

namespace zel::inspect {

/// The report for a terminal: lines of at most 120 columns where the file's texts allow it, the last one ended too. An
/// ordinary file takes at most 60 lines.
std::string ReportText(const FileReport& report);

/// "message", "font", "RGBA picture", "Bitstream list", "typeface list", "text" or "foreign".
std::string KindName(FileKind kind);

/// "whole", "readable, with defects", "broken: REASON" or "not a kind that the import reads: REASON".
std::string VerdictText(const FileReport& report);

/// A summary of the contents: "5 rows, 64 characters, fonts 12 14".
std::string Contents(const FileReport& report);

}  // namespace zel::inspect
