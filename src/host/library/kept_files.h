#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/library/library_entry.h"
#include "host/library/library_file.h"
#include "host/library/packed_file.h"

namespace zel::library {

// The files that a library keeps, each once, as long as a recording has its checksum. Functions that write are called
// within a transaction. All throw LibraryError.

/// Keeps a file, unless the library has it.
void KeepFile(LibraryFile& file, const PackedFile& kept);

/// @return null for a file that is not kept, and for a library of an earlier version.
SharedFile ReadKeptFile(LibraryFile& file, const std::string& sha256);

/// Keeps the files of a recording that another library has.
void CopyKeptFiles(LibraryFile& from, LibraryFile& to, const std::vector<SourceFile>& sources);

/// Checksums of the files that a recording was made from.
std::vector<std::string> ChecksumsOf(LibraryFile& file, RecordingId id);

/// Removes those that no recording has.
void DropUnusedFiles(LibraryFile& file, std::span<const std::string> checksums);

/// Whether the library keeps all files of a message; true for an RGBA file, of which it keeps none.
bool HasKeptFiles(LibraryFile& file, RecordingId id);

}  // namespace zel::library
