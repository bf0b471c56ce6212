#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "inspect/font_use.h"
#include "inspect/report.h"

namespace zel::cli {

/// Numbers of files and of places.
struct VerifyCounts {
    std::uint64_t whole = 0, readable = 0, broken = 0, foreign = 0, unreadable = 0;
    std::uint64_t faults = 0, notes = 0, files_with_faults = 0, missing_fonts = 0;
};

/// What a verification has found in all files.
struct VerifySummary {
    VerifyCounts counts;
    std::vector<inspect::MissingFont> missing_fonts;
    std::vector<inspect::UnusedFont> unused_fonts;
    /// Directories that can't be listed, each with the reason.
    std::vector<std::string> unlisted;

    std::uint64_t Files() const noexcept {
        return counts.whole + counts.readable + counts.broken + counts.foreign + counts.unreadable;
    }
    bool HasFault() const noexcept {
        return counts.faults != 0 || counts.unreadable != 0 || !missing_fonts.empty() || !unlisted.empty();
    }
};

/// The findings of a file as one line of JSON, without a line end.
std::string VerifyJson(const inspect::FileReport& report);

/// The line of a file that can't be read.
std::string UnreadableVerifyJson(const std::string& name, const std::string& reason);

/// The last line.
std::string VerifySummaryJson(const VerifySummary& summary);

}  // namespace zel::cli
