#include "platform/system/commands.h"

#include "platform/seam/desktop.h"
#include "platform/system/errors.h"

using namespace zel;

UINT WinExec(const char* commandLine, UINT) {
    constexpr UINT kStarted = 33;  // any value above 31 means success
    return seam::GetDesktop().RunCommand(commandLine != nullptr ? commandLine : "") ? kStarted : ERROR_FILE_NOT_FOUND;
}
