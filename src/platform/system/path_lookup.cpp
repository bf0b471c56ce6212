#include "platform/system/path_lookup.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/fold_case.h"
#include "platform/system/errors.h"
#include "platform/system/files.h"

namespace zel::system {

namespace {

struct Drive {
    std::string directory;  // empty: not mounted
    DWORD error = ERROR_SUCCESS;
};

std::array<Drive, 26>& Drives() {
    static auto& drives = *new std::array<Drive, 26>;  // outlives every module
    return drives;
}

constexpr bool IsLetter(char c) noexcept {
    return base::FoldCase(c) >= 'a' && base::FoldCase(c) <= 'z';
}
constexpr char Turn(char c) noexcept {
    return c == '\\' ? '/' : c;
}

/// The drive that a path begins with, null for none.
Drive* DriveOf(std::string_view path) {
    if (path.size() < 2 || path[1] != ':' || !IsLetter(path[0])) return nullptr;
    return &Drives()[static_cast<std::size_t>(base::FoldCase(path[0]) - 'a')];
}

bool Exists(const char* path) noexcept {
    struct stat status {};
    return ::stat(path, &status) == 0;
}

bool IsDirectory(const char* path) noexcept {
    struct stat status {};
    return ::stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

/// Writes over `name`, which lies in a path, the directory's entry that equals it but for case; the first in byte order
/// if several do.
bool FindInDirectory(const char* directory, char* name, std::size_t length) noexcept {
    const std::string_view wanted(name, length);
    if (std::none_of(wanted.begin(), wanted.end(), IsLetter))
        return false;  // there is no other case, so no need to look
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

/// Mends the last component of `path`, and before it those in front when they don't exist either.
DWORD MendPath(char* path) noexcept {
    std::size_t end = std::strlen(path);
    while (end > 1 && path[end - 1] == '/') --end;
    std::size_t start = end;
    while (start > 0 && path[start - 1] != '/') --start;
    std::size_t parentEnd = start;
    while (parentEnd > 0 && path[parentEnd - 1] == '/') --parentEnd;

    const char* const directory = start == 0 ? "." : parentEnd == 0 ? "/" : path;
    if (directory == path) {
        path[parentEnd] = '\0';
        const bool hasParent = IsDirectory(path) || MendPath(path) == ERROR_SUCCESS;
        path[parentEnd] = '/';
        if (!hasParent) return ERROR_PATH_NOT_FOUND;
    }
    if (Exists(path)) return ERROR_SUCCESS;
    if (parentEnd < start) path[parentEnd] = '\0';
    const bool found = FindInDirectory(directory, path + start, end - start);
    if (parentEnd < start) path[parentEnd] = '/';
    return found ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

int OpenNative(const char* path) noexcept {
    int descriptor = -1;
    do {
        descriptor = ::open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
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
    char* out = m_path.data();
    if (const Drive* drive = DriveOf(path)) {
        if (drive->error != ERROR_SUCCESS) return drive->error;
        if (drive->directory.empty()) return ERROR_PATH_NOT_FOUND;
        out = std::copy(drive->directory.begin(), drive->directory.end(), out);
        path.remove_prefix(2);
        if (path.empty() || Turn(path.front()) != '/') *out++ = '/';
    }
    out = std::transform(path.begin(), path.end(), out, Turn);
    *out = '\0';
    return ERROR_SUCCESS;
}

DWORD NativeName::MendCase() noexcept {
    return MendPath(m_path.data());
}

int OpenForReading(const char* modulePath, ULONGLONG* length) noexcept {
    NativeName name;
    if (const DWORD error = name.Set(modulePath)) {
        return Fail(error, error == ERROR_FILENAME_EXCED_RANGE ? ENAMETOOLONG : ENOENT);
    }
    int descriptor = OpenNative(name.Get());
    if (descriptor < 0 && (errno == ENOENT || errno == ENOTDIR)) {
        if (const DWORD error = name.MendCase()) return Fail(error, ENOENT);
        descriptor = OpenNative(name.Get());
    }
    if (descriptor < 0) return Fail(ErrorFromErrno(errno), errno);
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        if (length != nullptr) *length = static_cast<ULONGLONG>(status.st_size);
        return descriptor;
    }
    ::close(descriptor);
    return Fail(ERROR_ACCESS_DENIED, EACCES);
}

std::size_t ReadFully(int descriptor, void* buffer, std::size_t count, ULONGLONG offset) noexcept {
    constexpr std::size_t kMaximum = 1 << 30;  // of one call, well below what the system takes
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = ::pread(descriptor, static_cast<char*>(buffer) + done, std::min(count - done, kMaximum),
                                    static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

void MountDrive(char letter, const std::string& directory) {
    const char name[] = {letter, ':'};
    Drive* const drive = DriveOf({name, 2});
    if (drive == nullptr || directory.size() > NativeName::kDirectoryMaximum) return;
    std::size_t length = directory.size();
    while (length > 1 && directory[length - 1] == '/') --length;
    *drive = {directory.substr(0, length), ERROR_SUCCESS};
}

void MountUnreadableDrive(char letter, DWORD error) {
    const char name[] = {letter, ':'};
    if (Drive* const drive = DriveOf({name, 2})) *drive = {std::string(), error};
}

DWORD PathError(const char* modulePath) noexcept {
    NativeName name;
    return name.Set(modulePath);
}

std::string NativePath(const char* modulePath) {
    NativeName name;
    if (name.Set(modulePath) == ERROR_SUCCESS) {
        if (!Exists(name.Get())) name.MendCase();
        return name.Get();
    }
    std::string path = modulePath != nullptr ? modulePath : "";
    std::transform(path.begin(), path.end(), path.begin(), Turn);
    return path;
}

std::string ModulePath(const std::string& nativePath) {
    char letter = 0;
    std::string_view best;
    for (std::size_t i = 0; i < Drives().size(); ++i) {
        const std::string_view directory = Drives()[i].directory;
        const bool inside =
            nativePath.starts_with(directory) &&
            (directory == "/" || nativePath.size() == directory.size() || nativePath[directory.size()] == '/');
        if (directory.empty() || !inside || directory.size() <= best.size()) continue;
        best = directory;
        letter = static_cast<char>('A' + i);
    }
    std::string path = nativePath;
    if (letter != 0) path.replace(0, best == "/" ? 0 : best.size(), {letter, ':'});
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

}  // namespace zel::system
