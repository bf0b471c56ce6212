#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/compare/disk_comparison.h"
#include "host/library/library.h"

namespace zel::compare {

/// One recording of two libraries, or of one of them.
struct LibraryItem {
    library::RecordingKey key;
    bool in_a = false, in_b = false;
    /// Of a recording that both have: never kSameButBytes.
    FileComparison comparison;
};

/// Compares the recordings of two libraries by disk and number: their documents and the pixels of their pictures. The
/// paths, times and options of recordings don't count. Recordings are read one pair at a time.
/// @param disk  only recordings from the disk of this name; empty: all.
/// @param take  called for each recording, by disk and number.
/// @param stop  asked before each recording; true ends the comparison. May be empty.
/// @throws LibraryError
ItemCounts CompareLibraries(library::Library& a, library::Library& b, const std::optional<std::string>& disk,
                            const std::function<void(const LibraryItem&)>& take, const std::function<bool()>& stop);

/// Compares two recordings.
/// @param mark  make the picture with the differences marked.
FileComparison CompareRecordings(const library::Recording& a, const library::Recording& b, bool mark);

}  // namespace zel::compare
