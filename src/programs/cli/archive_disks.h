#pragma once

#include <string>
#include <vector>

#include "host/archive/unpacked_archive.h"
#include "programs/cli/batch_disk.h"
#include "programs/cli/kept_recent_lists.h"

namespace zel::cli {

/// The disks of an archive, unpacked as long as this object exists. The settings must be stored longer.
class ArchiveDisks {
  public:
    /// Whether a path may be one of an archive: a regular file.
    static bool MayBeArchive(const std::string& path);

    /// Unpacks an archive, unless the command is interrupted. Prints what of it is refused or can't be read.
    /// @throws std::runtime_error in one line, if there is no disk in it.
    explicit ArchiveDisks(const std::string& path);

    const std::vector<BatchDisk>& Disks() const noexcept { return m_disks; }
    /// Whether nothing was refused and all of the archive was read.
    bool IsWhole() const noexcept { return m_unpacked.IsWhole(); }

  private:
    const archive::UnpackedArchive m_unpacked;
    const KeptRecentLists m_recent_lists;
    std::vector<BatchDisk> m_disks;
};

}  // namespace zel::cli
