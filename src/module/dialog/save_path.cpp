#include "module/contract/dialog_ids.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/dialog/recent_list.h"
#include "platform/framework/cwinapp.h"

using namespace zel;

void CZelTransDlg::SavePath() {
    RECT rect{};
    GetWindowRect(&rect);
    CWinApp* const app = AfxGetModuleState()->m_pCurrentWinApp;
    app->WriteProfileInt("ZELFTPSaveOptions", "DialogX", static_cast<int>(rect.left));
    app->WriteProfileInt("ZELFTPSaveOptions", "DialogY", static_cast<int>(rect.top));
    char font_list[] = "FontDir", message_list[] = "MessageDir";
    DeleteZelTransRegistrySubKey(font_list);
    DeleteZelTransRegistrySubKey(message_list);
    dialog::StoreRecentEntries(*this, font_list, *this, ImportControl::kFontDirBox);
    dialog::StoreRecentEntries(*this, message_list, *this, ImportControl::kMessageDirBox);
    delete m_pFont;
    m_pFont = nullptr;  // the dialog is ending, but its object may outlive it
}
