#include "dialog/recent_list.h"
#include "dialog/zel_trans_dlg.h"
#include "font/zel_font.h"
#include "platform/framework/cwinapp.h"

namespace {

// Every entry of the box is stored, also beyond the ten that are read back.
void StoreList(CZelTransDlg& dialog, int combo_box, char* list) {
    CWnd* const box = dialog.GetDlgItem(combo_box);
    if (box == nullptr) return;
    const LRESULT count = box->SendMessage(CB_GETCOUNT);
    for (LRESULT index = 0; index < count; ++index) {
        char text[MAX_PATH] = {};
        const LRESULT length = box->SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
        if (length < 0 || length > kMaxRecentText) continue;
        if (box->SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)) < 0) continue;
        dialog.StoreRecentList(static_cast<int>(index), list, text);
    }
}

}  // namespace

void CZelTransDlg::SavePath() {
    RECT rect{};
    GetWindowRect(&rect);
    CWinApp* const app = AfxGetModuleState()->m_pCurrentWinApp;
    app->WriteProfileInt("ZELFTPSaveOptions", "DialogX", static_cast<int>(rect.left));
    app->WriteProfileInt("ZELFTPSaveOptions", "DialogY", static_cast<int>(rect.top));
    char font_list[] = "FontDir", message_list[] = "MessageDir";
    DeleteZelTransRegistrySubKey(font_list);
    DeleteZelTransRegistrySubKey(message_list);
    StoreList(*this, kFontDirBox, font_list);
    StoreList(*this, kMessageDirBox, message_list);
    delete m_pFont;
    m_pFont = nullptr;  // the dialog is ending, but its object may outlive it
}
