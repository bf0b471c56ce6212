#pragma once

#include "platform/system/types.h"

/// Longest text of a recent list's entry, in characters; the buffers that it passes through have one more for the NUL.
inline constexpr int kMaxRecentText = MAX_PATH - 1;

/// Reads one entry of a stored recent list, such as FontDir 0, where index 0 is the newest.
/// @param list  name of the list.
/// @param out   receives the text, NUL-terminated; untouched when there is no such entry or its text is too long.
bool ReadRecentEntry(const char* list, int index, char (&out)[MAX_PATH]);
