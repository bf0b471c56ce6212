#pragma once

#include <string>

#include "host/compare/disk_comparison.h"
#include "host/compare/library_comparison.h"

namespace zel::cli {

/// What `diff` prints: lines, or JSON, one object a line.
struct DiffOutput {
    /// As the user named them.
    std::string a, b;
    bool json = false;
    /// Bytes without effect on an import count as a difference.
    bool bytes = false;

    /// Two files that are compared by themselves.
    void PrintFiles(const compare::FileComparison& comparison) const;
    /// Nothing for files that are the same, except as details.
    void PrintItem(const compare::DiskItem& item) const;
    void PrintItem(const compare::LibraryItem& item) const;
    /// @param kind  "disk" or "library".
    /// @param noun  of what is counted: "file" or "recording".
    void PrintSummary(const char* kind, const char* noun, const compare::ItemCounts& counts) const;

    bool IsDifferent(const compare::FileComparison& comparison) const noexcept {
        return comparison.result == compare::ComparisonResult::kDifferent ||
               (bytes && comparison.result == compare::ComparisonResult::kSameButBytes);
    }
};

}  // namespace zel::cli
