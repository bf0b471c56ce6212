#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// The system's version record, 148 bytes.
struct OSVERSIONINFOA {
    // Set by the caller to the record's size.
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    char szCSDVersion[128];
};
static_assert(sizeof(OSVERSIONINFOA) == 148);

/// Fills the record. The version is 5.0 until SetSystemVersion changes it: the last one on which the disk library of
/// the copy button can read the legacy disk, so that the button is enabled.
/// @return FALSE, with ERROR_INSUFFICIENT_BUFFER, when dwOSVersionInfoSize is not the record's size.
ZEL_PLATFORM_API BOOL GetVersionExA(OSVERSIONINFOA* info);

namespace zel::system {

/// Sets the version that GetVersionExA reports from now on.
ZEL_PLATFORM_API void SetSystemVersion(DWORD major, DWORD minor);

}  // namespace zel::system
