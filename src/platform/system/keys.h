#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// State of a key, as the current desktop reports it: non-zero when the key is down or has been pressed since the last
/// call.
ZEL_PLATFORM_API SHORT GetAsyncKeyState(int virtualKey);
