#pragma once

#include "platform/api.h"

/// Calls of the home system's C runtime library that the standard library does not have.
namespace zel::crt {

inline constexpr int _MAX_DRIVE = 3, _MAX_DIR = 256, _MAX_FNAME = 256, _MAX_EXT = 256;

/// Splits a path into drive ("D:"), directory (with its closing separator), file name and extension (with its dot).
/// Each output may be null. Otherwise it has room for _MAX_DRIVE, _MAX_DIR, _MAX_FNAME or _MAX_EXT characters, and a
/// longer part is cut to that.
ZEL_PLATFORM_API void _splitpath(const char* path, char* drive, char* dir, char* fname, char* ext) noexcept;

/// Returns free heap memory to the system. Always 0.
ZEL_PLATFORM_API int _heapmin() noexcept;

}  // namespace zel::crt
