#pragma once

#include <string>
#include <string_view>

#include "platform/api.h"
#include "platform/system/types.h"

/// The drive letters of paths in the module's form, one table for the process.
namespace zel::system {

/// Mounts a drive letter on a directory of this system. An empty directory unmounts it. Without a mount, paths with
/// that letter aren't found.
ZEL_PLATFORM_API void MountDrive(char letter, const std::string& directory);

/// Makes every path on a drive fail with `error`, as with a drive without a disk (ERROR_NOT_READY) or one whose disk
/// has a foreign format (ERROR_NOT_DOS_DISK). MountDrive ends this.
ZEL_PLATFORM_API void MountUnreadableDrive(char letter, DWORD error);

/// A drive letter's entry.
struct Drive {
    // Without a closing separator; empty when the letter is not mounted.
    std::string directory;
    DWORD error = 0;
};

/// The drive of a path that begins with a letter and a colon, null for any other path.
const Drive* DriveOf(std::string_view path) noexcept;

/// The drive whose directory contains a path of this system; of several, the one with the longest directory.
/// @param letter  receives its letter, 0 for none.
/// @return null for none.
const Drive* DriveContaining(std::string_view nativePath, char& letter) noexcept;

/// The longest directory that can be mounted, so that every path below it fits into a NativeName.
inline constexpr std::size_t kLongestMount = 3800;

}  // namespace zel::system
