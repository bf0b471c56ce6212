#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// The registry calls, over the registry part of the current SettingsStore. Every call returns an error number, 0 for
/// success, and leaves the thread's last error alone. Left out: security, remote keys, enumeration, any root but
/// HKEY_CURRENT_USER.

using REGSAM = DWORD;
ZEL_PLATFORM_API extern const HKEY HKEY_CURRENT_USER;
inline constexpr DWORD REG_SZ = 1, REG_BINARY = 3, REG_DWORD = 4;
inline constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;
inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1, REG_OPENED_EXISTING_KEY = 2;

/// Opens an existing key below `key`; ERROR_FILE_NOT_FOUND when it isn't there. The caller closes it.
ZEL_PLATFORM_API LONG RegOpenKeyExA(HKEY key, const char* subKey, DWORD options, REGSAM access, HKEY* result);

/// Opens a key, made first if it isn't there, with every key on the way. `keyClass`, `security` and `disposition` may
/// be null.
ZEL_PLATFORM_API LONG RegCreateKeyExA(HKEY key, const char* subKey, DWORD reserved, const char* keyClass, DWORD options,
                                      REGSAM access, const void* security, HKEY* result, DWORD* disposition);

/// Reads a value. `type` may be null. With a null `data` only the size is asked; `size` holds the room in bytes and
/// receives the bytes of the value. A value that doesn't fit gives ERROR_MORE_DATA, with the size needed and `data`
/// untouched.
ZEL_PLATFORM_API LONG RegQueryValueExA(HKEY key, const char* name, DWORD* reserved, DWORD* type, BYTE* data,
                                       DWORD* size);

/// Writes a value; for a text the size counts its closing NUL.
ZEL_PLATFORM_API LONG RegSetValueExA(HKEY key, const char* name, DWORD reserved, DWORD type, const BYTE* data,
                                     DWORD size);

/// Deletes a key with its values; ERROR_FILE_NOT_FOUND when it isn't there, ERROR_ACCESS_DENIED when it has keys below
/// it.
ZEL_PLATFORM_API LONG RegDeleteKeyA(HKEY key, const char* subKey);

ZEL_PLATFORM_API LONG RegCloseKey(HKEY key);
