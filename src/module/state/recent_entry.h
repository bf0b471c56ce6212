#pragma once

#include "platform/framework/cstring.h"
#include "platform/system/types.h"

namespace zel::state {

/// Reads one entry of a stored recent list.
/// @param list  one of stored::kRecentLists.
/// @param out   receives the text, NUL-terminated; unchanged when the result is false.
/// @return false if there is no such entry or its text is too long.
bool ReadRecentEntry(const char* list, int index, char (&out)[MAX_PATH]);

/// Registry path of the key of a recent list, below the current user's root. The entries are values of that key.
CString RecentListKey(const char* list);
/// Name of the value of an entry.
CString RecentEntryName(const char* list, int index);

}  // namespace zel::state
