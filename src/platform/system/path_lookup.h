#pragma once

#include <array>
#include <cstddef>

#include "platform/system/types.h"

namespace zel::system {

/// From a path in the module's form to a file of this system, without allocating. Private to the platform.

/// A path of this system in a fixed buffer.
class NativeName {
  public:
    NativeName() noexcept { m_path[0] = '\0'; }

    /// Turns a path of the module's form. @return 0, or the error number of a path that can't name anything.
    DWORD Set(const char* modulePath) noexcept;

    const char* Get() const noexcept { return m_path.data(); }

    /// For a path that doesn't exist as written: looks for it in another case of its letters and mends it in place.
    /// @return 0 when it exists now, else ERROR_FILE_NOT_FOUND or ERROR_PATH_NOT_FOUND.
    DWORD MendCase() noexcept;

    static constexpr std::size_t kDirectoryMaximum = 3800;  // of a mounted directory, so that any path behind it fits

  private:
    std::array<char, 4096> m_path;
};

/// Opens a regular file for reading, without blocking on what isn't one.
/// @param length  receives the file's bytes; may be null.
/// @return the descriptor, or -1 with the last error and errno set.
int OpenForReading(const char* modulePath, ULONGLONG* length = nullptr) noexcept;

/// Reads from a place in the file until `count` bytes are there, the file ends or an error comes. The descriptor's own
/// position stays. @return the bytes read.
std::size_t ReadFully(int descriptor, void* buffer, std::size_t count, ULONGLONG offset) noexcept;

}  // namespace zel::system
