#include "platform/system/files.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

#include <sys/stat.h>

#include "platform/system/drives.h"
#include "platform/system/errors.h"
#include "platform/system/path_lookup.h"

using namespace zel;

namespace {

DWORD ReadStatus(const char* path, struct stat& status) noexcept {
    system::NativeName name;
    if (const DWORD error = name.Set(path)) return error;  // that of an unreadable drive included
    if (::stat(name.Get(), &status) == 0) return ERROR_SUCCESS;
    if (errno == ENOENT || errno == ENOTDIR) {
        if (const DWORD error = name.CorrectCase()) return error;
        if (::stat(name.Get(), &status) == 0) return ERROR_SUCCESS;
    }
    return system::ErrorFromErrno(errno);
}

}  // namespace

DWORD GetFileAttributesA(const char* path) noexcept {
    struct stat status {};
    const DWORD error = ReadStatus(path, status);
    if (error == ERROR_SUCCESS) return S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
    SetLastError(error == ERROR_FILENAME_EXCED_RANGE ? ERROR_PATH_NOT_FOUND : error);
    return INVALID_FILE_ATTRIBUTES;
}

namespace zel::system {

DWORD PathError(const char* modulePath) noexcept {
    NativeName name;
    return name.Set(modulePath);
}

std::string NativePath(const char* modulePath) {
    NativeName name;
    if (name.Set(modulePath) == ERROR_SUCCESS) {
        if (!name.Exists()) name.CorrectCase();
        return name.Get();
    }
    std::string path = modulePath != nullptr ? modulePath : "";
    std::transform(path.begin(), path.end(), path.begin(), NativeCharacter);
    return path;
}

std::string ModulePath(const std::string& nativePath) {
    std::string path = nativePath;
    char letter = 0;
    if (const Drive* const drive = DriveContaining(nativePath, letter)) {
        // The separator after the directory stays; the root is that separator itself.
        path.replace(0, drive->directory == "/" ? 0 : drive->directory.size(), {letter, ':'});
    }
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

}  // namespace zel::system
