#pragma once

#include <span>

#include "module/contract/dialog_ids.h"
#include "module/contract/stored_settings.h"

class CDialog;
class CZelTransDlg;

namespace zel::dialog {

/// A combo box and the recent list that it shows.
struct RecentBox {
    int combo_box;
    /// One of stored::kRecentLists.
    const char* list;
};

/// The directory boxes of the import dialog.
inline constexpr RecentBox kDirectoryBoxes[] = {{ImportControl::kFontDirBox, stored::kFontDirList},
                                                {ImportControl::kMessageDirBox, stored::kMessageDirList}};

/// Appends the stored entries, newest first, to the combo box of `dialog`. Missing entries are skipped.
void FillRecentBox(CZelTransDlg& main, CDialog& dialog, const RecentBox& recent);

/// Selects the newest entry of a combo box, which shows it in the edit field. A box without entries keeps its text.
void SelectNewest(CDialog& dialog, int combo_box);

/// Stores every entry of each combo box, also those beyond the ten that are read back. Entries that are too long are
/// skipped.
void StoreRecentBoxes(CZelTransDlg& main, CDialog& dialog, std::span<const RecentBox> boxes);

}  // namespace zel::dialog
