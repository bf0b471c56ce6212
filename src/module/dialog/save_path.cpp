#include "module/contract/dialog_ids.h"
#include "module/contract/stored_settings.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/dialog/recent_list.h"
#include "platform/framework/cwinapp.h"

using namespace zel;

void CZelTransDlg::SavePath() {
    RECT rect{};
    GetWindowRect(&rect);
    CWinApp* const app = AfxGetModuleState()->m_pCurrentWinApp;
    app->WriteProfileInt(stored::kFtpSection, stored::kDialogX, static_cast<int>(rect.left));
    app->WriteProfileInt(stored::kFtpSection, stored::kDialogY, static_cast<int>(rect.top));
    dialog::StoreRecentBoxes(*this, *this, dialog::kDirectoryBoxes);
    delete m_pFont;
    m_pFont = nullptr;  // the object may exist after the dialog has ended
}
