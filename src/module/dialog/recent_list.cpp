#include "module/dialog/recent_list.h"

#include <cstddef>
#include <cstring>

#include "module/contract/stored_settings.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/state/recent_entry.h"
#include "platform/framework/cstring.h"
#include "platform/system/errors.h"
#include "platform/system/registry.h"

using namespace zel;

bool CZelTransDlg::RestoreRecentList(int index, char* list, char* out) {
    char text[MAX_PATH];
    if (!state::ReadRecentEntry(list, index, text)) return false;
    std::memcpy(out, text, std::strlen(text) + 1);
    return true;
}

void CZelTransDlg::StoreRecentList(int index, char* list, char* text) {
    HKEY key = nullptr;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, state::RecentListKey(list), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_ALL_ACCESS, nullptr, &key, nullptr) != ERROR_SUCCESS) {
        return;
    }
    RegSetValueExA(key, state::RecentEntryName(list, index), 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                   static_cast<DWORD>(std::strlen(text) + 1));
    RegCloseKey(key);
}

bool CZelTransDlg::IsZelTransRegistrySubKeyExist(char* list, char* name) {
    CString path = state::RecentListKey(list);
    path += "\\";
    path += name;
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, path, 0, KEY_ALL_ACCESS, &key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
}

// The entries are values, not sub-keys, so they remain; StoreRecentBoxes overwrites them, index by index.
void CZelTransDlg::DeleteZelTransRegistrySubKey(char* list) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, state::RecentListKey(list), 0, KEY_ALL_ACCESS, &key) != ERROR_SUCCESS) return;
    for (int n = 0; n < stored::kRecentEntries; ++n) {
        CString name = state::RecentEntryName(list, n);
        if (IsZelTransRegistrySubKeyExist(list, name.GetBuffer(0))) RegDeleteKeyA(key, name);
    }
    RegCloseKey(key);
}

namespace zel::dialog {

namespace {

/// Stores the entries of one combo box, index by index.
void StoreEntries(CZelTransDlg& main, char* list, CWnd& box) {
    const LRESULT count = box.SendMessage(CB_GETCOUNT);
    int stored_entries = 0;
    for (LRESULT index = 0; index < count; ++index) {
        char text[MAX_PATH] = {};
        const LRESULT length = box.SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
        if (length < 0 || static_cast<std::size_t>(length) > stored::kMaxRecentText) continue;
        if (box.SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)) < 0) continue;
        main.StoreRecentList(stored_entries++, list, text);
    }
}

}  // namespace

void FillRecentBox(CZelTransDlg& main, CDialog& dialog, const RecentBox& recent) {
    CWnd* const box = dialog.GetDlgItem(recent.combo_box);
    if (box == nullptr) return;
    CString list(recent.list);
    char text[MAX_PATH];
    for (int index = 0; index < stored::kRecentEntries; ++index) {
        if (main.RestoreRecentList(index, list.GetBuffer(0), text))
            box->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
}

void SelectNewest(CDialog& dialog, int combo_box) {
    CWnd* const box = dialog.GetDlgItem(combo_box);
    if (box != nullptr && box->SendMessage(CB_GETCOUNT) > 0) box->SendMessage(CB_SETCURSEL, 0);
}

void StoreRecentBoxes(CZelTransDlg& main, CDialog& dialog, std::span<const RecentBox> boxes) {
    for (const RecentBox& recent : boxes) main.DeleteZelTransRegistrySubKey(CString(recent.list).GetBuffer(0));
    for (const RecentBox& recent : boxes) {
        CString list(recent.list);
        if (CWnd* const box = dialog.GetDlgItem(recent.combo_box)) StoreEntries(main, list.GetBuffer(0), *box);
    }
}

}  // namespace zel::dialog
