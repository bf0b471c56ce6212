#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// The thread's last error, and the system's text for it.

inline constexpr DWORD ERROR_SUCCESS = 0, ERROR_FILE_NOT_FOUND = 2, ERROR_PATH_NOT_FOUND = 3,
                       ERROR_TOO_MANY_OPEN_FILES = 4, ERROR_ACCESS_DENIED = 5, ERROR_INVALID_HANDLE = 6,
                       ERROR_NOT_ENOUGH_MEMORY = 8, ERROR_NOT_READY = 21, ERROR_SEEK = 25, ERROR_NOT_DOS_DISK = 26,
                       ERROR_GEN_FAILURE = 31, ERROR_SHARING_VIOLATION = 32, ERROR_UNEXP_NET_ERR = 59,
                       ERROR_INVALID_PARAMETER = 87, ERROR_DISK_FULL = 112, ERROR_INSUFFICIENT_BUFFER = 122,
                       ERROR_MOD_NOT_FOUND = 126, ERROR_FILENAME_EXCED_RANGE = 206, ERROR_MORE_DATA = 234,
                       ERROR_MR_MID_NOT_FOUND = 317, ERROR_NO_MEDIA_IN_DRIVE = 1112, ERROR_DLL_INIT_FAILED = 1114,
                       ERROR_IO_DEVICE = 1117, ERROR_DEVICE_NOT_CONNECTED = 1167, ERROR_FILE_CORRUPT = 1392,
                       ERROR_DISK_CORRUPT = 1393, ERROR_INVALID_WINDOW_HANDLE = 1400, ERROR_UNRECOGNIZED_MEDIA = 1785;

/// Error number of this thread's last failed system call. A call that succeeds does not change it.
ZEL_PLATFORM_API DWORD GetLastError() noexcept;
ZEL_PLATFORM_API void SetLastError(DWORD error) noexcept;

namespace zel::system {

/// The system's error number for a value of errno; ERROR_GEN_FAILURE for one without a counterpart. A disk that cannot
/// be read has a number above ERROR_NOT_DOS_DISK.
ZEL_PLATFORM_API DWORD ErrorFromErrno(int value) noexcept;

}  // namespace zel::system

inline constexpr DWORD FORMAT_MESSAGE_ALLOCATE_BUFFER = 0x100, FORMAT_MESSAGE_FROM_SYSTEM = 0x1000;

/// The system's text of an error, which ends in CR LF. Only the flags 0x1100 are supported: `buffer` is then the
/// address of a char*, which receives a text that the caller frees with LocalFree. `source`, `language`, `size` and
/// `arguments` are ignored.
/// @return the text's length; 0, with the char* null, for an unknown number (last error 317) or other flags (87).
ZEL_PLATFORM_API DWORD FormatMessageA(DWORD flags, const void* source, DWORD message, DWORD language, char* buffer,
                                      DWORD size, void* arguments) noexcept;

/// Frees a text that FormatMessageA has allocated; null is allowed.
/// @return null.
ZEL_PLATFORM_API void* LocalFree(void* memory) noexcept;
