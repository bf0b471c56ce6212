#include "host/archive/archived_disks.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/fold_case.h"

namespace zel::archive {

namespace {

namespace fs = std::filesystem;

/// The file's name without its extension; a compressed tar file has two.
std::string StemOf(const fs::path& archive) {
    fs::path stem = archive.stem();
    if (base::EqualsFolded(stem.extension().string(), ".tar")) stem = stem.stem();
    return stem.string();
}

}  // namespace

std::vector<ArchivedDisk> DisksIn(const fs::path& root, const fs::path& archive) {
    std::vector<ArchivedDisk> disks;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_directory() || !base::EqualsFolded(entry.path().filename().string(), "MESSAGES")) continue;
        const fs::path folder = entry.path().parent_path();
        if (folder == root) {
            disks.push_back({{}, StemOf(archive)});
        } else {
            disks.push_back({folder.lexically_relative(root).string(), folder.filename().string()});
        }
    }
    std::ranges::sort(disks, {}, &ArchivedDisk::folder);
    return disks;
}

}  // namespace zel::archive
