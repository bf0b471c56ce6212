#pragma once

#include "platform/framework/cstring.h"
#include "platform/system/types.h"

class CDialog;

namespace zel::dialog {

/// A picked file, its path in two: up to and behind the last backslash, which is in neither.
struct PickedFile {
    char directory[MAX_PATH];
    CString name;
};

/// Lets the user pick a file, which stands for the directory that it lies in. The choice begins in the directory that
/// a combo box names, if there is such a directory.
/// @return false when the user cancelled.
bool PickFile(CDialog& dialog, int combo_box, const char* title, PickedFile& picked);

/// Brings a text to the top of a combo box's list and selects it.
void BringToTop(CDialog& dialog, int combo_box, const char* text);

}  // namespace zel::dialog
