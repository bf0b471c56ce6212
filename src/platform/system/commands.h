#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// Hands a command line to the current desktop, which shows the text file that it names; no shell and no program ever
/// sees it.
/// @return above 31 when the desktop took it, else an error number.
ZEL_PLATFORM_API UINT WinExec(const char* commandLine, UINT show);
