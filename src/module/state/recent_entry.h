#pragma once

#include "platform/framework/cstring.h"
#include "platform/system/types.h"

namespace zel::state {

/// Longest text of a recent list's entry, in characters; the buffers that it passes through have one more for the NUL.
inline constexpr int kMaxRecentText = MAX_PATH - 1;

/// Reads one entry of a stored recent list, such as FontDir 0, where index 0 is the newest.
/// @param list  name of the list.
/// @param out   receives the text, NUL-terminated; untouched when there is no such entry or its text is too long.
bool ReadRecentEntry(const char* list, int index, char (&out)[MAX_PATH]);

/// Registry path, below the user's root, of the key that holds a recent list. A list is a key of its own; its entries
/// are values of that key.
CString RecentListKey(const char* list);
/// Name of the value that holds an entry of a list.
CString RecentEntryName(const char* list, int index);

}  // namespace zel::state
