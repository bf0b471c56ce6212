#pragma once

#include "platform/api.h"
#include "platform/system/types.h"

/// State of a key as the current desktop tells it: non-zero when it is down or has been pressed since the last asking.
ZEL_PLATFORM_API SHORT GetAsyncKeyState(int virtualKey);
