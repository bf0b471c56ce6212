#pragma once

#include <string>

#include "inspect/report.h"

namespace zel::inspect {

/// Number of places where a rule isn't kept.
struct FindingCounts {
    std::uint64_t faults = 0;
    std::uint64_t notes = 0;
};
FindingCounts CountFindings(const FileReport& report);

/// The record of a place: "row 0, record 3", "tab field 4", "code 65 'A'", "line 12"; empty for the file.
std::string RecordName(const Finding& finding, const Place& place);

/// A file's findings for a terminal: a line with its verdict, then a line for each rule that isn't kept, the faults
/// first.
/// @param all  every place has a line of its own.
std::string VerifyText(const FileReport& report, bool all);

}  // namespace zel::inspect
