#pragma once

#include <optional>
#include <string>

#include "programs/cli/command.h"

namespace zel::cli {

enum class TextsFormat { kCsv, kJson };

/// What `library texts` does.
struct TextsRequest {
    std::string library;
    /// Only recordings from the disk of this name; empty: all.
    std::optional<std::string> disk;
    TextsFormat format = TextsFormat::kCsv;
    /// "-" is standard output.
    std::string out = "-";
};

/// Writes the texts and tab fields of a library's recordings as a table, a recording at a time: CSV (RFC 4180) with a
/// heading, its texts as base::WithFormulaGuard makes them, or one JSON object a line. A recording whose document can't
/// be read is reported, and the others are written.
/// @throws LibraryError, CommandError
ExitCode WriteLibraryTexts(const TextsRequest& request);

}  // namespace zel::cli
