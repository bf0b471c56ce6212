#pragma once

#include "platform/framework/cstring.h"
#include "platform/system/types.h"

class CDialog;

namespace zel::dialog {

/// The path of a chosen file, without the backslash between its two parts.
struct PickedFile {
    char directory[MAX_PATH];
    CString name;
};

/// Shows a file dialog. It starts in the directory that a combo box names, if there is such a directory.
/// @return false if the user cancelled.
bool PickFile(CDialog& dialog, int combo_box, const char* title, PickedFile& picked);

/// Moves a text to the top of a combo box's list, or inserts it there, and selects it.
void BringToTop(CDialog& dialog, int combo_box, const char* text);

}  // namespace zel::dialog
