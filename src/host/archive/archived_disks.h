#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zel::archive {

/// A disk in an archive.
struct ArchivedDisk {
    /// In the archive, with slashes; empty for one at the top.
    std::string folder;
    /// The usual name of the disk: that of its folder, or the archive's without its extensions.
    std::string name;
};

/// The disks among unpacked files: folders with a folder MESSAGES, sorted.
/// @param root     the directory of the files.
/// @param archive  the archive's file, for the name of a disk at its top.
std::vector<ArchivedDisk> DisksIn(const std::filesystem::path& root, const std::filesystem::path& archive);

}  // namespace zel::archive
