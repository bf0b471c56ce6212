#include "base/whole_file.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <mutex>
#include <new>
#include <stdexcept>
#include <tuple>
#include <utility>

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

constexpr mode_t kNewFileMode = 0666;  // less the process's umask

/// Whether the entry itself, not the target of a link, is a regular file.
bool StatRegular(int directory, const char* name, struct stat& status) noexcept {
    return ::fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode);
}

std::error_code LastError() noexcept {
    return {errno, std::generic_category()};
}

/// The list of the unfinished files that have a temporary name. Locked while a name is made or removed.
std::mutex g_named_mutex;
UnfinishedFile* g_first_named = nullptr;

}  // namespace

UnfinishedFile::UnfinishedFile(const std::filesystem::path& file)
    : m_own_directory(OpenDirectoryOf(file)), m_directory(m_own_directory.Get()), m_name(file.filename().string()) {
    if (m_own_directory.IsOpen()) Open();
}

UnfinishedFile::UnfinishedFile(int directory, std::string name, std::string temporary_name)
    : m_directory(directory), m_name(std::move(name)), m_requested_name(std::move(temporary_name)) {
    ::unlinkat(m_directory, m_requested_name.c_str(), 0);
    Open();
}

UnfinishedFile::~UnfinishedFile() {
    const int error = errno;  // of the failure that the caller is about to report
    if (m_has_temporary_name) {
        const std::lock_guard lock(g_named_mutex);
        ::unlinkat(m_directory, TemporaryName(), 0);
        SetHasTemporaryName(false);
    }
    errno = error;
}

void UnfinishedFile::SetHasTemporaryName(bool has_name) noexcept {
    if (has_name == m_has_temporary_name) return;
    m_has_temporary_name = has_name;
    if (has_name) {
        m_next_named = std::exchange(g_first_named, this);
        return;
    }
    UnfinishedFile** link = &g_first_named;
    while (*link != this) link = &(*link)->m_next_named;
    *link = m_next_named;
}

void RemoveUnfinishedFiles() noexcept {
    g_named_mutex.lock();  // for good: no other thread makes one now
    for (const UnfinishedFile* file = g_first_named; file != nullptr; file = file->m_next_named)
        ::unlinkat(file->m_directory, file->TemporaryName(), 0);
}

void UnfinishedFile::Open() noexcept {
    // Never more open than the file that it replaces.
    struct stat replaced {};
    const mode_t mode =
        StatRegular(m_directory, m_name.c_str(), replaced) ? replaced.st_mode & kNewFileMode : kNewFileMode;
    m_file = FileDescriptor(::openat(m_directory, ".", O_WRONLY | O_TMPFILE | O_CLOEXEC, mode));
    // The three errors of a file system or kernel without nameless files.
    if (m_file.IsOpen() || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) return;
    const std::lock_guard lock(g_named_mutex);
    SetHasTemporaryName(OpenWithTemporaryName(mode));
}

bool UnfinishedFile::OpenWithTemporaryName(mode_t mode) noexcept {
    return WithTemporaryName([&](const char* name) {
        m_file = FileDescriptor(::openat(m_directory, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        return m_file.IsOpen();
    });
}

const char* UnfinishedFile::TemporaryName() const noexcept {
    return m_requested_name.empty() ? m_free_name.data() : m_requested_name.c_str();
}

/// Calls a function with the requested name, else with names until one is free.
/// @param attempt  makes a file of that name, or returns false with errno set.
template <class Attempt>
bool UnfinishedFile::WithTemporaryName(Attempt attempt) noexcept {
    if (!m_requested_name.empty()) return attempt(TemporaryName());
    // More than the names that killed programs with this one's number, or somebody who wants to disturb it, have left.
    constexpr int kMostAttempts = 1000;
    static std::atomic<unsigned> next{0};
    for (int attempts = 0; attempts < kMostAttempts; ++attempts) {
        std::snprintf(m_free_name.data(), m_free_name.size(), ".zeltrans-%ld-%u.part", static_cast<long>(::getpid()),
                      next++);
        if (attempt(m_free_name.data())) return true;
        if (errno != EEXIST) return false;
    }
    return false;
}

/// Gives the nameless file a name that no file has.
bool UnfinishedFile::Link(const char* name) const noexcept {
    char self[64];
    std::snprintf(self, sizeof self, "/proc/self/fd/%d", m_file.Get());
    return ::linkat(AT_FDCWD, self, m_directory, name, AT_SYMLINK_FOLLOW) == 0;
}

/// Takes over permissions, owner and group of the file that is about to be replaced. Whoever couldn't read that one
/// can't read this one: without its group, it has no permissions for a group.
void UnfinishedFile::KeepAccess() const noexcept {
    struct stat replaced {};
    struct stat own {};
    if (!StatRegular(m_directory, m_name.c_str(), replaced) || ::fstat(m_file.Get(), &own) != 0) return;
    constexpr uid_t kSameUser = static_cast<uid_t>(-1);
    constexpr gid_t kSameGroup = static_cast<gid_t>(-1);
    const bool same_group = own.st_gid == replaced.st_gid || ::fchown(m_file.Get(), kSameUser, replaced.st_gid) == 0;
    ::fchmod(m_file.Get(), replaced.st_mode & (S_IRWXU | S_IRWXO | (same_group ? S_IRWXG : 0)));
    // Last, since the new owner alone may change permissions. The file stays the caller's if this fails.
    if (own.st_uid != replaced.st_uid) std::ignore = ::fchown(m_file.Get(), replaced.st_uid, kSameGroup);
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
        if (Link(m_name.c_str())) return true;
        if (errno != EEXIST || existing == Existing::kKeep) return false;
        const std::lock_guard lock(g_named_mutex);
        SetHasTemporaryName(WithTemporaryName([this](const char* name) { return Link(name); }));
        if (!m_has_temporary_name) return false;
    }
    if (existing == Existing::kReplace) KeepAccess();
    const bool renamed = existing == Existing::kKeep
                             ? RenameToNewName(m_directory, TemporaryName(), m_name.c_str())
                             : ::renameat(m_directory, TemporaryName(), m_directory, m_name.c_str()) == 0;
    if (!renamed) return false;
    const std::lock_guard lock(g_named_mutex);
    SetHasTemporaryName(false);
    return true;
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

std::error_code MakeDirectoriesTo(const std::filesystem::path& file) noexcept {
    try {
        std::error_code error;
        const std::filesystem::path directory = file.parent_path();
        if (directory.empty() || std::filesystem::exists(directory, error)) return {};
        if (const std::error_code failure = MakeDirectoriesTo(directory)) return failure;
        std::filesystem::create_directory(directory, error);
        if (!error) SyncDirectory(OpenDirectoryOf(directory).Get());
        return error;
    } catch (const std::bad_alloc&) {
        return std::make_error_code(std::errc::not_enough_memory);
    }
}

void WriteWholeFile(const std::filesystem::path& file, std::string_view bytes) {
    if (const std::error_code error = TryWriteWholeFile(file, bytes)) {
        throw std::runtime_error(file.string() + ": could not be written: " + error.message());
    }
}

bool RenameToNewName(int directory, const char* from, const char* to) noexcept {
    if (::renameat2(directory, from, directory, to, RENAME_NOREPLACE) == 0) return true;
    if (errno != EINVAL) return false;
    // This file system can't rename without replacing. A link is made only under a free name.
    if (::linkat(directory, from, directory, to, 0) == 0) {
        ::unlinkat(directory, from, 0);
        return true;
    }
    if (errno == EEXIST) return false;
    // It has no links either.
    if (::faccessat(directory, to, F_OK, AT_SYMLINK_NOFOLLOW) == 0) return errno = EEXIST, false;
    return ::renameat(directory, from, directory, to) == 0;
}

}  // namespace zel::base
