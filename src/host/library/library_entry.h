#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "host/library/recording.h"

namespace zel::library {

/// Identifies a recording within its library, until it is removed or replaced. A later recording may have the same one.
using RecordingId = std::int64_t;

/// One line of a library's table of contents.
struct LibraryEntry {
    RecordingId id = 0;
    RecordingKey key;
    RecordingKind kind = RecordingKind::kMessage;
    std::string text;
    /// Path of the message's own file.
    std::string source;
    std::string recorded_at;
    int warnings = 0;
};

/// Which part of a listing is read.
struct ListPart {
    /// The first one is the one that follows this in the order of the listing; the recording need not exist.
    std::optional<RecordingKey> after = std::nullopt;
    std::size_t most = std::numeric_limits<std::size_t>::max();
};

/// Which recordings a table has.
struct TableFilter {
    /// As in Library::Search.
    std::string words;
    std::optional<std::string> disk = std::nullopt;
    bool only_with_warnings = false;
};

/// The recordings of a library without their texts, 16 bytes for each, so that a list of very many is made at once and
/// filled with entries where it is looked at.
struct LibraryTable {
    struct Row {
        RecordingId id = 0;
        /// In `disks`.
        std::uint32_t disk = 0;
        std::int32_t number = 0;
    };
    RecordingKey KeyOf(const Row& row) const { return {disks[row.disk], row.number}; }

    /// Of the whole library, sorted.
    std::vector<std::string> disks;
    std::vector<Row> rows;
};

/// What a recording was made from, to find out whether it is up to date.
struct RecordingOrigin {
    std::string options;
    std::vector<SourceFile> sources;
    int warnings = 0;
    /// The library keeps all these files, see kLargestKeptFile.
    bool has_files = false;
};

}  // namespace zel::library
