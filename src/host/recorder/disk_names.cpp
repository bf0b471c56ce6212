#include "host/recorder/disk_names.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/fold_case.h"

namespace zel::recorder {

namespace {

namespace fs = std::filesystem;

/// The path without dots and links, so that one directory has one path. Its end need not exist.
fs::path Resolved(const fs::path& path) {
    std::error_code error;
    const fs::path resolved = fs::weakly_canonical(path, error);
    return error ? path.lexically_normal() : resolved;
}

bool IsFrom(const library::LibraryEntry& entry, const fs::path& resolved_directory) {
    return Resolved(fs::path(entry.source).parent_path()) == resolved_directory;
}

}  // namespace

std::string UsualDiskName(const std::string& directory) {
    fs::path path = fs::path(directory).lexically_normal();
    if (!path.has_filename()) path = path.parent_path();
    const bool is_part = base::EqualsFolded(path.filename().string(), "MESSAGES");
    const fs::path disk = is_part ? path.parent_path() : path;
    return disk.has_filename() ? disk.filename().string() : disk.string();
}

std::string DiskNames::NameOf(library::Library& library, const std::string& directory) {
    return NameOf(library, directory, UsualDiskName(directory));
}

std::string DiskNames::NameOf(library::Library& library, const std::string& directory, const std::string& usual) {
    for (const NamedDirectory& known : m_named) {
        if (known.directory == directory) return known.name;
    }
    const fs::path resolved = Resolved(directory);
    const auto is_free = [&](const std::string& name) {
        const std::vector<library::LibraryEntry> entries = library.List(name, {.most = 1});
        if (!entries.empty()) return IsFrom(entries.front(), resolved);
        return std::ranges::find(m_named, name, &NamedDirectory::name) == m_named.end();
    };
    // The command can record a disk without a name.
    const std::vector<library::LibraryEntry> unnamed = library.List("", {.most = 1});
    const bool is_unnamed = !unnamed.empty() && IsFrom(unnamed.front(), resolved);
    std::string name = is_unnamed ? std::string() : usual;
    for (int count = 2; !is_free(name); ++count) name = usual + " (" + std::to_string(count) + ")";
    m_named.push_back({directory, name});
    return name;
}

}  // namespace zel::recorder
