#include "platform/system/path_lookup.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "base/fold_case.h"
#include "platform/system/drives.h"
#include "platform/system/errors.h"

namespace zel::system {

namespace {

bool PathExists(const char* path) noexcept {
    struct stat status {};
    return ::stat(path, &status) == 0;
}

bool IsDirectory(const char* path) noexcept {
    struct stat status {};
    return ::stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

/// Searches a directory for an entry that equals `name` without regard to case, and copies its spelling over `name`. Of
/// several entries it takes the first in byte order.
bool FindInDirectory(const char* directory, char* name, std::size_t length) noexcept {
    const std::string_view wanted(name, length);
    if (std::none_of(wanted.begin(), wanted.end(), base::IsAsciiLetter)) return false;  // no other case exists
    DIR* const stream = ::opendir(directory);
    if (stream == nullptr) return false;
    bool found = false;
    while (const dirent* entry = ::readdir(stream)) {
        const std::string_view candidate(entry->d_name);
        if (!base::EqualsFolded(candidate, wanted) || (found && candidate >= wanted)) continue;
        std::memcpy(name, candidate.data(), length);
        found = true;
    }
    ::closedir(stream);
    return found;
}

/// The last component of a path, and where the directory above it ends: 0 for the root or for none.
struct LastComponent {
    std::size_t parentEnd, start, end;
};

LastComponent FindLastComponent(const char* path) noexcept {
    std::size_t end = std::strlen(path);
    while (end > 1 && path[end - 1] == '/') --end;
    std::size_t start = end;
    while (start > 0 && path[start - 1] != '/') --start;
    std::size_t parentEnd = start;
    while (parentEnd > 0 && path[parentEnd - 1] == '/') --parentEnd;
    return {parentEnd, start, end};
}

/// Shortens a path to its first characters for as long as the object lives.
class ShortenedPath {
  public:
    ShortenedPath(char* path, std::size_t length) noexcept
        : m_end(path + length), m_character(std::exchange(*m_end, '\0')) {}
    ~ShortenedPath() { *m_end = m_character; }

    ShortenedPath(const ShortenedPath&) = delete;
    ShortenedPath& operator=(const ShortenedPath&) = delete;

  private:
    char* m_end;
    char m_character;
};

DWORD CorrectPath(char* path) noexcept;

/// Whether the directory above a component exists, possibly after its case was corrected.
bool CorrectParent(char* path, const LastComponent& last) noexcept {
    if (last.parentEnd == 0) return true;  // the root or the current directory
    const ShortenedPath parent(path, last.parentEnd);
    return IsDirectory(path) || CorrectPath(path) == ERROR_SUCCESS;
}

bool CorrectName(char* path, const LastComponent& last) noexcept {
    char* const name = path + last.start;
    const std::size_t length = last.end - last.start;
    if (last.parentEnd == 0) return FindInDirectory(last.start == 0 ? "." : "/", name, length);
    const ShortenedPath parent(path, last.parentEnd);
    return FindInDirectory(path, name, length);
}

/// Corrects the case of the last component, and before that of the components above it that don't exist either.
DWORD CorrectPath(char* path) noexcept {
    const LastComponent last = FindLastComponent(path);
    if (!CorrectParent(path, last)) return ERROR_PATH_NOT_FOUND;
    return PathExists(path) || CorrectName(path, last) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

base::FileDescriptor OpenNative(const char* path) noexcept {
    return base::FileDescriptor(
        base::RetryInterrupted([=] { return ::open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); }));
}

int Fail(DWORD error, int value) noexcept {
    SetLastError(error);
    errno = value;
    return -1;
}

}  // namespace

DWORD NativeName::Set(const char* modulePath) noexcept {
    if (modulePath == nullptr || *modulePath == '\0') return ERROR_PATH_NOT_FOUND;
    std::string_view path(modulePath, ::strnlen(modulePath, MAX_PATH));
    if (path.size() >= MAX_PATH) return ERROR_FILENAME_EXCED_RANGE;
    static_assert(kLongestMount + 1 + MAX_PATH <= sizeof m_path);
    char* out = m_path.data();
    if (const Drive* drive = DriveOf(path)) {
        if (drive->error != ERROR_SUCCESS) return drive->error;
        if (drive->directory.empty()) return ERROR_PATH_NOT_FOUND;
        out = std::copy(drive->directory.begin(), drive->directory.end(), out);
        path.remove_prefix(2);
        if (path.empty() || NativeCharacter(path.front()) != '/') *out++ = '/';
    }
    out = std::transform(path.begin(), path.end(), out, NativeCharacter);
    *out = '\0';
    return ERROR_SUCCESS;
}

bool NativeName::Exists() const noexcept {
    return PathExists(m_path.data());
}

DWORD NativeName::CorrectCase() noexcept {
    return CorrectPath(m_path.data());
}

int OpenForReading(const char* modulePath, ULONGLONG* length) noexcept {
    NativeName name;
    if (const DWORD error = name.Set(modulePath)) {
        return Fail(error, error == ERROR_FILENAME_EXCED_RANGE ? ENAMETOOLONG : ENOENT);
    }
    base::FileDescriptor file = OpenNative(name.Get());
    if (!file.IsOpen() && (errno == ENOENT || errno == ENOTDIR)) {
        if (const DWORD error = name.CorrectCase()) return Fail(error, ENOENT);
        file = OpenNative(name.Get());
    }
    struct stat status {};
    if (!file.IsOpen()) {
        const int error = errno;
        // A socket can't be opened, but its medium is all right.
        const bool socket = error == ENXIO && ::stat(name.Get(), &status) == 0 && S_ISSOCK(status.st_mode);
        return socket ? Fail(ERROR_ACCESS_DENIED, EACCES) : Fail(ErrorFromErrno(error), error);
    }
    if (::fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return Fail(ERROR_ACCESS_DENIED, EACCES);
    if (length != nullptr) *length = static_cast<ULONGLONG>(status.st_size);
    return file.Release();
}

}  // namespace zel::system
