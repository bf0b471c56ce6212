#pragma once

#include <string>

#include "platform/api.h"
#include "platform/system/types.h"

/// Files by path. A path in the module's form has backslashes (slashes are accepted), possibly a drive letter, and at
/// most 259 characters. It is opened as written first, with one call. Only a name that doesn't exist is searched for
/// without regard to the case of ASCII letters, component by component. system/drives.h mounts drive letters.

inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF, FILE_ATTRIBUTE_DIRECTORY = 0x10,
                       FILE_ATTRIBUTE_NORMAL = 0x80;

/// Attributes of a file or directory; INVALID_FILE_ATTRIBUTES when there is none. The last error is then 2 (the name is
/// missing), 3 (its directory is missing, the drive isn't mounted, or the path is empty or too long), 5, a number of
/// ERROR_NOT_DOS_DISK or more for a disk that cannot be read, or the error that MountUnreadableDrive has set for the
/// drive.
ZEL_PLATFORM_API DWORD GetFileAttributesA(const char* path) noexcept;

namespace zel::system {

/// This system's path for a path in the module's form: separators converted, the drive letter replaced by its
/// directory, and the case corrected of as much of the path as exists in another case. A path on a drive that isn't
/// mounted keeps its letter.
ZEL_PLATFORM_API std::string NativePath(const char* modulePath);

/// Error number of a path in the module's form that can't name anything (empty, too long, on a drive that isn't
/// mounted); 0 for any other path, whether or not it exists.
ZEL_PLATFORM_API DWORD PathError(const char* modulePath) noexcept;

/// The module's form of a path of this system: slashes become backslashes, and a mounted directory at the start becomes
/// its drive letter. An absolute path outside every mount keeps its leading separator.
ZEL_PLATFORM_API std::string ModulePath(const std::string& nativePath);

}  // namespace zel::system
