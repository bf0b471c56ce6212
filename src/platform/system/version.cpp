#include "platform/system/version.h"

#include "platform/system/errors.h"

namespace {

constexpr DWORD kPlatformNt = 2;

DWORD g_majorVersion = 5;
DWORD g_minorVersion = 0;

}  // namespace

BOOL GetVersionExA(OSVERSIONINFOA* info) {
    if (info == nullptr || info->dwOSVersionInfoSize != sizeof(OSVERSIONINFOA)) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    *info = {sizeof(OSVERSIONINFOA), g_majorVersion, g_minorVersion, 0, kPlatformNt, {}};
    return TRUE;
}

namespace zel::system {

void SetSystemVersion(DWORD major, DWORD minor) {
    g_majorVersion = major;
    g_minorVersion = minor;
}

}  // namespace zel::system
