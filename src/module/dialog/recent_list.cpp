#include "module/dialog/recent_list.h"

#include <cstdio>
#include <cstring>

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

// The entries are values, so this pass over sub-keys leaves them; the new list is written over them, index by index.
void CZelTransDlg::DeleteZelTransRegistrySubKey(char* list) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, state::RecentListKey(list), 0, KEY_ALL_ACCESS, &key) != ERROR_SUCCESS) return;
    for (int n = 0; n < 10; ++n) {
        CString name = state::RecentEntryName(list, n);
        if (IsZelTransRegistrySubKeyExist(list, name.GetBuffer(0))) RegDeleteKeyA(key, name);
    }
    RegCloseKey(key);
}

namespace zel::dialog {

void AppendRecentEntry(CZelTransDlg& main, int index, const char* list, CDialog& dialog, int combo_box) {
    char list_name[16], text[MAX_PATH];
    std::snprintf(list_name, sizeof list_name, "%s", list);
    CWnd* const box = dialog.GetDlgItem(combo_box);
    if (box != nullptr && main.RestoreRecentList(index, list_name, text))
        box->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
}

void StoreRecentEntries(CZelTransDlg& main, char* list, CDialog& dialog, int combo_box) {
    CWnd* const box = dialog.GetDlgItem(combo_box);
    if (box == nullptr) return;
    const LRESULT count = box->SendMessage(CB_GETCOUNT);
    int stored = 0;
    for (LRESULT index = 0; index < count; ++index) {
        char text[MAX_PATH] = {};
        const LRESULT length = box->SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
        if (length < 0 || length > state::kMaxRecentText) continue;
        if (box->SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)) < 0) continue;
        main.StoreRecentList(stored++, list, text);
    }
}

}  // namespace zel::dialog
