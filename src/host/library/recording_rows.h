#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/library/library_entry.h"
#include "host/library/library_file.h"
#include "host/library/recording.h"

namespace zel::library {

// A recording in the tables of a library. Functions that write are called within a transaction. All throw LibraryError.

/// Number of the recording's row.
using RecordingId = std::int64_t;

std::optional<RecordingId> FindRecording(LibraryFile& file, const RecordingKey& key);

/// The library must not contain the recording yet.
void InsertRecording(LibraryFile& file, const Recording& recording);

/// Removes all rows of the recording.
void DeleteRecording(LibraryFile& file, RecordingId id);

Recording ReadRecording(LibraryFile& file, RecordingId id);
RecordingOrigin ReadOrigin(LibraryFile& file, RecordingId id);
std::string ReadPicture(LibraryFile& file, RecordingId id);

/// All recordings, ordered by disk and number.
std::vector<RecordingId> ReadIds(LibraryFile& file);

/// A query of entries: of the table `recording`, with the joins, conditions and order in `rest`.
std::string SelectEntries(const std::string& rest);
/// The rows of such a query.
std::vector<LibraryEntry> ReadEntries(LibraryFile& file, base::SqliteStatement& query);

}  // namespace zel::library
