#pragma once

class CDialog;
class CZelTransDlg;

namespace zel::dialog {

/// Appends one entry of a stored list to a combo box; a missing one leaves no gap. A list is read by asking for 0 to 9.
void AppendRecentEntry(CZelTransDlg& main, int index, const char* list, CDialog& dialog, int combo_box);

/// Stores every entry of a combo box, also beyond the ten that are read back; one that is too long is left out,
/// without a gap.
void StoreRecentEntries(CZelTransDlg& main, char* list, CDialog& dialog, int combo_box);

}  // namespace zel::dialog
