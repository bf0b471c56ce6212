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

std::optional<RecordingId> FindRecording(LibraryFile& file, const RecordingKey& key);

/// The library must not contain the recording yet. Its files are not kept.
void InsertRecording(LibraryFile& file, const Recording& recording);

/// Removes all rows of the recording.
void DeleteRecording(LibraryFile& file, RecordingId id);

Recording ReadRecording(LibraryFile& file, RecordingId id);
RecordingOrigin ReadOrigin(LibraryFile& file, RecordingId id);
std::string ReadPicture(LibraryFile& file, RecordingId id);
std::string ReadDocument(LibraryFile& file, RecordingId id);

/// All recordings, ordered by disk and number.
std::vector<RecordingId> ReadIds(LibraryFile& file);

/// A query of entries: of the table `recording`, with the conditions and the order in `rest`.
std::string SelectEntries(const std::string& rest);
/// Appends the rows of such a query.
void ReadEntries(LibraryFile& file, base::SqliteStatement& query, std::vector<LibraryEntry>& entries);

/// Names of the disks, sorted. The time depends on their number, not on that of the recordings.
std::vector<std::string> ReadDisks(LibraryFile& file);

/// Appends the rows of a query for a recording's id, disk and number.
/// @param disks  sorted, with the disk of each recording.
void ReadTableRows(LibraryFile& file, base::SqliteStatement& query, const std::vector<std::string>& disks,
                   std::vector<LibraryTable::Row>& rows);

/// Appends the rows of a query for the ids and numbers of one disk's recordings.
/// @param disk  its place in the table.
void ReadDiskRows(LibraryFile& file, base::SqliteStatement& query, std::uint32_t disk,
                  std::vector<LibraryTable::Row>& rows);

}  // namespace zel::library
