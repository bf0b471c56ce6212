#pragma once

#include <optional>
#include <string>
#include <vector>

#include "inspect/report.h"

namespace zel::cli {

/// One file of a directory.
struct DirectoryEntry {
    /// Path relative to the directory.
    std::string name;
    /// Empty if the file cannot be read; then `error` is the reason.
    std::optional<inspect::FileReport> report;
    std::string error;
};

/// The inspected files of a directory and its subdirectories.
class DirectoryTable {
  public:
    explicit DirectoryTable(const std::string& directory);

    /// Sorted by name.
    const std::vector<DirectoryEntry>& Entries() const noexcept { return m_entries; }

    /// The number of files by kind, a line per file, and the missing fonts.
    std::string Text() const;

    /// The number of broken and unreadable files, in one line; empty if there are none. Foreign files are no failure.
    std::string Failure() const;

  private:
    std::string Totals() const;
    std::string MissingFonts() const;

    std::string m_directory;
    std::string m_error;  // why the directory could not be listed
    std::vector<DirectoryEntry> m_entries;
};

}  // namespace zel::cli
