#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <archive.h>
#include <archive_entry.h>

namespace zel::test {

/// An entry of an archive to be written; nothing of it needs to make sense.
struct StoredEntry {
    std::string name;
    std::string contents{};
    unsigned type = AE_IFREG;
    /// Target of a hard link.
    std::string hard_link{};
    std::time_t modified = 1000000000;
};

/// How an archive is written: libarchive's names of a format and of a filter, which may be empty.
struct StoredAs {
    const char* format;
    const char* filter = "";
};

/// @throws std::runtime_error with libarchive's reason.
inline void WriteArchive(const std::filesystem::path& file, StoredAs form, const std::vector<StoredEntry>& entries) {
    const std::unique_ptr<struct archive, decltype(&archive_write_free)> archive(archive_write_new(),
                                                                                 &archive_write_free);
    const auto check = [&](la_ssize_t result) {
        if (result < ARCHIVE_WARN) throw std::runtime_error(archive_error_string(archive.get()));
    };
    check(archive_write_set_format_by_name(archive.get(), form.format));
    if (*form.filter != '\0') check(archive_write_add_filter_by_name(archive.get(), form.filter));
    // Otherwise a file is filled up to 10 KiB, and a cut there is no cut.
    check(archive_write_set_bytes_in_last_block(archive.get(), 1));
    check(archive_write_open_filename(archive.get(), file.c_str()));
    const std::unique_ptr<struct archive_entry, decltype(&archive_entry_free)> entry(archive_entry_new(),
                                                                                     &archive_entry_free);
    for (const StoredEntry& stored : entries) {
        archive_entry_clear(entry.get());
        archive_entry_set_pathname(entry.get(), stored.name.c_str());
        archive_entry_set_filetype(entry.get(), stored.type);
        archive_entry_set_perm(entry.get(), 0);
        archive_entry_set_mtime(entry.get(), stored.modified, 0);
        archive_entry_set_size(entry.get(), static_cast<la_int64_t>(stored.contents.size()));
        if (stored.type == AE_IFLNK) archive_entry_set_symlink(entry.get(), "/etc/passwd");
        if (!stored.hard_link.empty()) archive_entry_set_hardlink(entry.get(), stored.hard_link.c_str());
        check(archive_write_header(archive.get(), entry.get()));
        check(archive_write_data(archive.get(), stored.contents.data(), stored.contents.size()));
    }
    check(archive_write_close(archive.get()));
}

}  // namespace zel::test
