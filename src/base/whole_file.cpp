#include "base/whole_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <new>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zel::base {

namespace {

// Search permission is enough for O_PATH.
FileDescriptor OpenDirectoryOf(const std::filesystem::path& file) {
    const std::filesystem::path directory = file.has_parent_path() ? file.parent_path() : ".";
    return FileDescriptor(::open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

// A file's name is stored with its directory. A directory that can't be opened for reading can't be synced.
void SyncDirectory(int directory) noexcept {
    const FileDescriptor readable(::openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (readable.IsOpen()) ::fsync(readable.Get());
}

std::error_code LastError() noexcept {
    return {errno, std::generic_category()};
}

}  // namespace

UnfinishedFile::UnfinishedFile(const std::filesystem::path& file)
    : m_own_directory(OpenDirectoryOf(file)),
      m_directory(m_own_directory.Get()),
      m_name(file.filename().string()),
      m_temporary_name(m_name + ".part-" + std::to_string(::getpid())) {
    if (m_own_directory.IsOpen()) Open();
}

UnfinishedFile::UnfinishedFile(int directory, std::string name, std::string temporary_name)
    : m_directory(directory), m_name(std::move(name)), m_temporary_name(std::move(temporary_name)) {
    Open();
}

UnfinishedFile::~UnfinishedFile() {
    const int error = errno;  // of the failure that the caller is about to report
    if (m_has_temporary_name) ::unlinkat(m_directory, m_temporary_name.c_str(), 0);
    errno = error;
}

void UnfinishedFile::Open() noexcept {
    ::unlinkat(m_directory, m_temporary_name.c_str(), 0);
    m_file = FileDescriptor(::openat(m_directory, ".", O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666));
    // The three errors of a file system or kernel without nameless files.
    if (m_file.IsOpen() || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) return;
    constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    m_file = FileDescriptor(::openat(m_directory, m_temporary_name.c_str(), kFlags, 0666));
    m_has_temporary_name = m_file.IsOpen();
}

/// Gives the nameless file a name that no file has.
bool UnfinishedFile::Link(const std::string& name) const noexcept {
    char self[64];
    std::snprintf(self, sizeof self, "/proc/self/fd/%d", m_file.Get());
    return ::linkat(AT_FDCWD, self, m_directory, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool UnfinishedFile::Sync() noexcept {
    m_synced = ::fsync(m_file.Get()) == 0;
    return m_synced;
}

bool UnfinishedFile::Commit(Existing existing) noexcept {
    const bool named = TakeName(existing);
    if (named && m_synced) SyncDirectory(m_directory);
    return named;
}

bool UnfinishedFile::TakeName(Existing existing) noexcept {
    if (!m_has_temporary_name) {
        if (Link(m_name)) return true;
        if (errno != EEXIST || existing == Existing::kKeep || !Link(m_temporary_name)) return false;
        m_has_temporary_name = true;
    }
    const bool renamed = existing == Existing::kKeep
                             ? RenameToNewName(m_directory, m_temporary_name, m_name)
                             : ::renameat(m_directory, m_temporary_name.c_str(), m_directory, m_name.c_str()) == 0;
    m_has_temporary_name = !renamed;
    return renamed;
}

std::error_code TryWriteWholeFile(const std::filesystem::path& file, std::string_view bytes,
                                  Durability durability) noexcept {
    try {
        UnfinishedFile unfinished(file);
        const bool written = unfinished.IsOpen() && unfinished.Write(bytes) &&
                             (durability == Durability::kUnsynced || unfinished.Sync()) && unfinished.Commit();
        return written ? std::error_code() : LastError();
    } catch (const std::bad_alloc&) {
        return std::make_error_code(std::errc::not_enough_memory);
    }
}

void WriteWholeFile(const std::filesystem::path& file, std::string_view bytes) {
    if (const std::error_code error = TryWriteWholeFile(file, bytes)) {
        throw std::runtime_error(file.string() + ": could not be written: " + error.message());
    }
}

bool RenameToNewName(int directory, const std::string& from, const std::string& to) noexcept {
    if (::renameat2(directory, from.c_str(), directory, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno != EINVAL) return false;
    // This file system can't rename without replacing. A link is made only under a free name.
    if (::linkat(directory, from.c_str(), directory, to.c_str(), 0) == 0) {
        ::unlinkat(directory, from.c_str(), 0);
        return true;
    }
    if (errno == EEXIST) return false;
    // It has no links either.
    if (::faccessat(directory, to.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) return errno = EEXIST, false;
    return ::renameat(directory, from.c_str(), directory, to.c_str()) == 0;
}

}  // namespace zel::base
