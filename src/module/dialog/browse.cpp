#include "module/dialog/browse.h"

#include <cstdio>

#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/framework/cfiledialog.h"
#include "platform/framework/cwinapp.h"
#include "platform/system/files.h"

using namespace zel;

namespace zel::dialog {

void BringToTop(CDialog& dialog, int combo_box, const char* text) {
    CWnd* const box = dialog.GetDlgItem(combo_box);
    if (box == nullptr) return;
    const LRESULT found = box->SendMessage(CB_FINDSTRINGEXACT, 0, reinterpret_cast<LPARAM>(text));
    if (found >= 0) box->SendMessage(CB_DELETESTRING, static_cast<WPARAM>(found));
    box->SendMessage(CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>(text));
    box->SendMessage(CB_SETCURSEL, 0);
}

bool PickFile(CDialog& dialog, int combo_box, const char* title, PickedFile& picked) {
    CFileDialog files(TRUE, "*.*", nullptr, OFN_HIDEREADONLY | OFN_EXPLORER, "*.*||", AfxGetThread()->m_pMainWnd);
    files.m_ofn.lpstrTitle = title;
    CString start;
    dialog.GetDlgItemText(combo_box, start);
    const DWORD attributes = GetFileAttributesA(start);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        files.m_ofn.lpstrInitialDir = start;
    if (files.DoModal() != IDOK) return false;
    const CString path = files.GetPathName();
    const int last = path.ReverseFind('\\');
    std::snprintf(picked.directory, sizeof picked.directory, "%.*s", last < 0 ? 0 : last,
                  static_cast<const char*>(path));
    picked.name = path.Mid(last + 1);
    return true;
}

}  // namespace zel::dialog

void CZelTransDlg::OnButtonBrowserFont() {
    dialog::PickedFile picked;
    if (!dialog::PickFile(*this, ImportControl::kFontDirBox, "Zelmara Font Directory", picked)) return;
    dialog::BringToTop(*this, ImportControl::kFontDirBox, picked.directory);
    UpdateData(FALSE);
}

void CZelTransDlg::OnButtonBrowserMessage() {
    dialog::PickedFile picked;
    if (!dialog::PickFile(*this, ImportControl::kMessageDirBox, "Zelmara Message Directory", picked)) return;
    dialog::BringToTop(*this, ImportControl::kMessageDirBox, picked.directory);
    SetDlgItemText(ImportControl::kMessageIdEdit, picked.name);
}
