#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "inspect/report.h"
#include "programs/cli/file_tree.h"

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
    /// @param name  of the directory in texts.
    DirectoryTable(const std::string& directory, std::string name);

    /// Sorted by name.
    const std::vector<DirectoryEntry>& Entries() const noexcept { return m_entries; }

    /// The number of files by kind, a line per file, and the missing fonts.
    std::string Text() const;

    /// The number of broken and unreadable files and directories, in one line; empty if there are none. Foreign files
    /// are no failure.
    std::string Failure() const;

    /// The number of readable files with defects.
    std::size_t DefectCount() const;

  private:
    std::string Totals() const;
    std::string MissingFonts() const;

    const std::string m_name;
    std::vector<UnlistedDirectory> m_unlisted;
    std::vector<DirectoryEntry> m_entries;
};

}  // namespace zel::cli
