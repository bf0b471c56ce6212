#include "platform/seam/desktop.h"
#include "platform/system/commands.h"
#include "platform/system/errors.h"
#include "platform/system/keys.h"
#include "platform/system/version.h"

using namespace zel;

namespace {

constexpr DWORD kPlatformNt = 2;

DWORD g_majorVersion = 5;
DWORD g_minorVersion = 0;

}  // namespace

SHORT GetAsyncKeyState(int virtualKey) {
    constexpr SHORT kDown = INT16_MIN;  // the topmost bit
    return seam::GetDesktop().IsKeyDown(virtualKey) ? kDown : SHORT{0};
}

UINT WinExec(const char* commandLine, UINT) {
    constexpr UINT kStarted = 33;  // anything above 31 is success
    return seam::GetDesktop().RunCommand(commandLine != nullptr ? commandLine : "") ? kStarted : ERROR_FILE_NOT_FOUND;
}

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
