#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// The registry calls, on top of the registry part of the current SettingsStore. Every call returns an error number, 0
/// for success, and does not change the thread's last error. Not provided: security, remote keys, enumeration, any root
/// but HKEY_CURRENT_USER.

using REGSAM = DWORD;
ZEL_PLATFORM_API extern const HKEY HKEY_CURRENT_USER;
inline constexpr DWORD REG_SZ = 1, REG_BINARY = 3, REG_DWORD = 4;
inline constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;
inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1, REG_OPENED_EXISTING_KEY = 2;

/// Opens an existing key below `key`; ERROR_FILE_NOT_FOUND when there is none. The caller closes it.
ZEL_PLATFORM_API LONG RegOpenKeyExA(HKEY key, const char* subKey, DWORD options, REGSAM access, HKEY* result);

/// Opens a key. A missing key is created first, with every missing key above it. `keyClass`, `security` and
/// `disposition` may be null.
ZEL_PLATFORM_API LONG RegCreateKeyExA(HKEY key, const char* subKey, DWORD reserved, const char* keyClass, DWORD options,
                                      REGSAM access, const void* security, HKEY* result, DWORD* disposition);

/// Reads a value.
/// @param type  may be null.
/// @param data  null to get the size only.
/// @param size  contains the room at `data` in bytes, and receives the size of the value.
/// @return ERROR_MORE_DATA when the value doesn't fit; `size` is then the size needed, and `data` is not written.
ZEL_PLATFORM_API LONG RegQueryValueExA(HKEY key, const char* name, DWORD* reserved, DWORD* type, BYTE* data,
                                       DWORD* size);

/// Writes a value. The size of a text includes its closing NUL.
ZEL_PLATFORM_API LONG RegSetValueExA(HKEY key, const char* name, DWORD reserved, DWORD type, const BYTE* data,
                                     DWORD size);

/// Deletes a key with its values.
/// @return ERROR_FILE_NOT_FOUND when there is no such key, ERROR_ACCESS_DENIED when it has keys below it.
ZEL_PLATFORM_API LONG RegDeleteKeyA(HKEY key, const char* subKey);

ZEL_PLATFORM_API LONG RegCloseKey(HKEY key);
