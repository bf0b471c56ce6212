#pragma once

#include <array>
#include <cstddef>

#include "platform/system/types.h"

/// From a path in the module's form to a file of this system, without allocating. Private to the platform.
namespace zel::system {

/// The character of a native path for one in the module's form.
constexpr char NativeCharacter(char c) noexcept {
    return c == '\\' ? '/' : c;
}

/// A path of this system in a fixed buffer.
class NativeName {
  public:
    NativeName() noexcept { m_path[0] = '\0'; }

    /// Converts a path of the module's form.
    /// @return 0, or the error number of a path that can't name anything.
    DWORD Set(const char* modulePath) noexcept;

    const char* Get() const noexcept { return m_path.data(); }

    /// Whether the path exists as it is.
    bool Exists() const noexcept;

    /// For a path that doesn't exist as written: searches for one that differs only in the case of its letters, and
    /// takes its spelling.
    /// @return 0 when the path exists now, else ERROR_FILE_NOT_FOUND or ERROR_PATH_NOT_FOUND.
    DWORD CorrectCase() noexcept;

  private:
    std::array<char, 4096> m_path;
};

/// Opens a regular file for reading. Refuses anything else without blocking on it.
/// @param length  receives the file's length in bytes; may be null.
/// @return the descriptor, or -1 with the last error and errno set.
int OpenForReading(const char* modulePath, ULONGLONG* length = nullptr) noexcept;

}  // namespace zel::system
