#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zel::cli {

/// A directory that could not be listed.
struct UnlistedDirectory {
    /// Path relative to the top, "." for the top.
    std::string name;
    std::string reason;

    /// "MESSAGES can't be listed: Permission denied"; the name as it may be printed.
    std::string Text() const;
};

/// The files of a directory and its subdirectories, sorted. Links to directories are not followed.
struct FileTree {
    std::vector<std::filesystem::path> files;
    std::vector<UnlistedDirectory> unlisted;
};
FileTree FindFiles(const std::filesystem::path& directory);

}  // namespace zel::cli
