#pragma once

#include <string>

#include "platform/api.h"
#include "platform/system/types.h"

/// Files by path. A path stands in the module's form: backslashes (slashes serve too), perhaps a drive letter, at most
/// 259 characters. It is opened as written first, with one call; only a name that isn't there is looked for without
/// regard to the case of ASCII letters, component by component.

inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF, FILE_ATTRIBUTE_DIRECTORY = 0x10,
                       FILE_ATTRIBUTE_NORMAL = 0x80;

/// Attributes of a file or directory; INVALID_FILE_ATTRIBUTES when there is none, with the last error 2 (the name is
/// missing), 3 (its directory is missing, the drive isn't mounted, or the path is empty or too long), 5 or 21. No other
/// error comes up, except the one that MountUnreadableDrive sets for a drive.
ZEL_PLATFORM_API DWORD GetFileAttributesA(const char* path) noexcept;

namespace zel::system {

/// Mounts a drive letter on a directory of this system; an empty directory unmounts it. Without a mount, paths with
/// that letter aren't found. Process-wide, as is the next.
ZEL_PLATFORM_API void MountDrive(char letter, const std::string& directory);

/// Makes every path on a drive fail with `error`, as a drive with no disk (ERROR_NOT_READY) or one whose disk is of a
/// foreign format (ERROR_NOT_DOS_DISK) does. MountDrive ends it.
ZEL_PLATFORM_API void MountUnreadableDrive(char letter, DWORD error);

/// This system's path for a path in the module's form: separators turned, the drive letter replaced by its directory,
/// and the case mended of as much of the path as exists in another. A path on a drive that isn't mounted keeps its
/// letter.
ZEL_PLATFORM_API std::string NativePath(const char* modulePath);

/// Error number of a path in the module's form that can't name anything (empty, too long, on a drive that isn't
/// mounted); 0 for a path that can, whether or not it exists.
ZEL_PLATFORM_API DWORD PathError(const char* modulePath) noexcept;

/// The module's form of a path of this system: slashes become backslashes, and a mounted directory in front becomes its
/// drive letter. An absolute path outside every mount keeps its leading separator.
ZEL_PLATFORM_API std::string ModulePath(const std::string& nativePath);

}  // namespace zel::system

/// The runtime library's calls whose names the standard library has taken, or doesn't have.
namespace zel::crt {

inline constexpr int _MAX_DRIVE = 3, _MAX_DIR = 256, _MAX_FNAME = 256, _MAX_EXT = 256;

/// Splits a path into drive ("D:"), directory (with its closing separator), file name and extension (with its dot).
/// Each output may be null; else it has room for _MAX_DRIVE, _MAX_DIR, _MAX_FNAME or _MAX_EXT characters, and a longer
/// part is cut to that.
ZEL_PLATFORM_API void _splitpath(const char* path, char* drive, char* dir, char* fname, char* ext) noexcept;

/// Gives free heap memory back to the system. Always 0.
ZEL_PLATFORM_API int _heapmin() noexcept;

}  // namespace zel::crt
