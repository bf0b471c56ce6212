#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// The system's version record, 148 bytes.
struct OSVERSIONINFOA {
    DWORD dwOSVersionInfoSize;  // set by the caller to the record's size
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    char szCSDVersion[128];
};
static_assert(sizeof(OSVERSIONINFOA) == 148);

/// Fills the record; FALSE, with ERROR_INSUFFICIENT_BUFFER, when dwOSVersionInfoSize isn't its size. The version is 5.0
/// until SetSystemVersion changes it: the last one on which the disk library of the copy button still drives the legacy
/// disk, so that the button is enabled.
ZEL_PLATFORM_API BOOL GetVersionExA(OSVERSIONINFOA* info);

namespace zel::system {

/// Sets the version that GetVersionExA tells from now on.
ZEL_PLATFORM_API void SetSystemVersion(DWORD major, DWORD minor);

}  // namespace zel::system
