#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "host/compare/file_comparison.h"

namespace zel::compare {

/// One file of two disks, or of one of them.
struct DiskItem {
    /// "MESSAGES" or "MACHINE"; empty in a directory that has neither.
    std::string folder;
    /// Of the file; empty if its name has none.
    std::optional<int> number;
    /// This system's; empty where the disk doesn't have it.
    std::string a, b;
    /// Of a file that both have.
    FileComparison comparison;
};

/// How many files of two disks, or recordings of two libraries, have each result.
struct ItemCounts {
    std::size_t same = 0, same_but_bytes = 0, different = 0, only_in_a = 0, only_in_b = 0, trouble = 0;

    void Add(ComparisonResult result) noexcept;
};

/// Compares the files in MESSAGES and MACHINE of two disks, or those directly in two directories that have neither, by
/// their numbers. Files with the same bytes are not imported. Memory is needed for the names of the files and for one
/// pair of them.
/// @param a, b     directories.
/// @param options  `mark` is ignored.
/// @param take     called for each file, messages first, by number.
/// @param stop     asked before each file; true ends the comparison. May be empty.
/// @throws std::runtime_error  with the directory's name and the reason, if one can't be listed.
ItemCounts CompareDisks(const std::string& a, const std::string& b, const ComparisonOptions& options,
                        const std::function<void(const DiskItem&)>& take, const std::function<bool()>& stop);

}  // namespace zel::compare
