#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// Passes a command line to the current desktop, which shows the text file named in it. No shell and no program ever
/// receives the line.
/// @return above 31 when the desktop has shown the file, else an error number.
ZEL_PLATFORM_API UINT WinExec(const char* commandLine, UINT show);
