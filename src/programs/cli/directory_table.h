#pragma once

#include <optional>
#include <string>
#include <vector>

#include "inspect/report.h"

namespace zel::cli {

/// One file of a directory.
struct DirectoryEntry {
    std::string name;                           ///< path below the directory.
    std::optional<inspect::FileReport> report;  ///< empty when the file can't be read.
    std::string error;                          ///< why it can't.
};

/// A directory's files, those of its directories too, each inspected.
class DirectoryTable {
  public:
    explicit DirectoryTable(const std::string& directory);

    /// By name.
    const std::vector<DirectoryEntry>& Entries() const noexcept { return m_entries; }

    /// A line for each file, then how many there are of each verdict, and which fonts are missing.
    std::string Text() const;

    /// How many files are broken or can't be read, in one line; empty when there are none. What is foreign is no
    /// failure here.
    std::string Failure() const;

  private:
    std::string Totals() const;
    std::string MissingFonts() const;

    std::string m_directory;
    std::string m_error;  // why the directory couldn't be listed
    std::vector<DirectoryEntry> m_entries;
};

}  // namespace zel::cli
