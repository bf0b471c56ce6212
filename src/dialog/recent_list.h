#pragma once

#include "platform/system/types.h"

class CDialog;
class CZelTransDlg;

/// Longest text of a recent list's entry, in characters; the buffers that it passes through have one more for the NUL.
inline constexpr int kMaxRecentText = MAX_PATH - 1;

/// Reads one entry of a stored recent list, such as FontDir 0, where index 0 is the newest.
/// @param list  name of the list.
/// @param out   receives the text, NUL-terminated; untouched when there is no such entry or its text is too long.
bool ReadRecentEntry(const char* list, int index, char (&out)[MAX_PATH]);

/// Appends one entry of a stored list to a combo box; a missing one leaves no gap. A list is read by asking for 0 to 9.
void AppendRecentEntry(CZelTransDlg& main, int index, const char* list, CDialog& dialog, int combo_box);

/// Stores every entry of a combo box, also beyond the ten that are read back; one that is too long is left out,
/// without a gap.
void StoreRecentEntries(CZelTransDlg& main, char* list, CDialog& dialog, int combo_box);
