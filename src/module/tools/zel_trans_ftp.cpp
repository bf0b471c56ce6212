#include "module/contract/zel_trans_ftp.h"

#include <cstddef>

#include "module/contract/dialog_ids.h"
#include "module/contract/host_messages.h"
#include "module/contract/stored_settings.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/dialog/browse.h"
#include "module/dialog/recent_list.h"
#include "module/state/module_state.h"
#include "module/tools/stored_password.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/data_exchange.h"

using namespace zel;

#define FTP_OFFSET(member) (offsetof(CZelTransFTP, member) - offsetof(CZelTransFTP, m_pTransDlg))
// The members that the host reads, relative to the first.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(sizeof(void*) != 4 ||
              (FTP_OFFSET(m_pParentFtp) == 4 && FTP_OFFSET(m_strIpAddress) == 8 && FTP_OFFSET(m_strUsername) == 12 &&
               FTP_OFFSET(m_bSavePassword) == 16 && FTP_OFFSET(m_strPassword) == 20 &&
               FTP_OFFSET(m_strRemoteDir) == 24 && FTP_OFFSET(m_strLocalDir) == 28 && FTP_OFFSET(m_strFile) == 32 &&
               FTP_OFFSET(m_bExecute) == 36 && FTP_OFFSET(m_bSkipWarnings) == 40 && FTP_OFFSET(m_bOverwriteAll) == 44 &&
               FTP_OFFSET(m_nHostValue) == 48 && FTP_OFFSET(m_bPassive) == 52 && FTP_OFFSET(m_listFiles) == 56));
#pragma GCC diagnostic pop
#undef FTP_OFFSET

namespace {

// In the order in which the lists are stored.
constexpr dialog::RecentBox kRecentBoxes[] = {{FtpControl::kLocalDirBox, stored::kFtpLocalDirList},
                                              {FtpControl::kRemoteDirBox, stored::kFtpRemoteDirList},
                                              {FtpControl::kAddressBox, stored::kFtpAddressList}};

CWinApp& App() {
    return *AfxGetModuleState()->m_pCurrentWinApp;
}

}  // namespace

CZelTransFTP::CZelTransFTP(CWnd* parent) : CDialog(kFtpDialog, parent) {
    CWinApp& app = App();
    m_strIpAddress = app.GetProfileStringA(stored::kFtpSection, stored::kIpAddress);
    m_strFile = app.GetProfileStringA(stored::kFtpSection, stored::kMessageNumber);
    m_bSkipWarnings = state::StoredSkipWarnings();
    m_bOverwriteAll = static_cast<BOOL>(app.GetProfileIntA(stored::kFtpSection, stored::kOverwriteAll, 0));
    m_bPassive = static_cast<BOOL>(app.GetProfileIntA(stored::kFtpSection, stored::kPassive, 0));
    SaveWarningPref(m_bSkipWarnings);
}

BEGIN_MESSAGE_MAP(CZelTransFTP, CDialog)
ON_BN_CLICKED(FtpControl::kBrowseLocalButton, &CZelTransFTP::OnButtonBrowseLocal)
ON_BN_CLICKED(FtpControl::kBrowseRemoteButton, &CZelTransFTP::OnButtonBrowseRemote)
ON_BN_CLICKED(FtpControl::kExecuteButton, &CZelTransFTP::OnButtonFtpExecute)
ON_BN_CLICKED(FtpControl::kSkipWarningsCheck, &CZelTransFTP::OnCheckImportSkip)
ON_BN_CLICKED(FtpControl::kOverwriteCheck, &CZelTransFTP::OnCheckOverwriteAll)
END_MESSAGE_MAP()

BOOL CZelTransFTP::Create(const char*, const char*, DWORD, const RECT&, CWnd* parent, UINT, CCreateContext*) {
    return CDialog::Create(kFtpDialog, parent);
}

void CZelTransFTP::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, FtpControl::kAddressBox, m_strIpAddress);
    DDX_Text(exchange, FtpControl::kUsernameEdit, m_strUsername);
    DDX_Check(exchange, FtpControl::kSavePasswordCheck, m_bSavePassword);
    DDX_Text(exchange, FtpControl::kPasswordEdit, m_strPassword);
    DDX_Text(exchange, FtpControl::kRemoteDirBox, m_strRemoteDir);
    DDX_Text(exchange, FtpControl::kLocalDirBox, m_strLocalDir);
    DDX_Text(exchange, FtpControl::kFileEdit, m_strFile);
    DDX_Check(exchange, FtpControl::kSkipWarningsCheck, m_bSkipWarnings);
    DDX_Check(exchange, FtpControl::kOverwriteCheck, m_bOverwriteAll);
    DDX_Check(exchange, FtpControl::kPassiveCheck, m_bPassive);
}

INT_PTR CZelTransFTP::DoModal() {
    return CDialog::DoModal();
}

BOOL CZelTransFTP::OnInitDialog() {
    CDialog::OnInitDialog();
    const bool has_address = !m_strIpAddress.IsEmpty();
    if (!has_address) m_strIpAddress = App().GetProfileStringA(stored::kFallbackFtpSection, stored::kIpAddress);
    if (!has_address && !m_strIpAddress.IsEmpty()) {
        if (CWnd* const box = GetDlgItem(FtpControl::kAddressBox))
            box->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(m_strIpAddress.GetString()));
        dialog::SelectNewest(*this, FtpControl::kAddressBox);
        ReadAccount(stored::kFallbackFtpSection);
    } else {
        ReadAccount(stored::kFtpSection);
    }
    ShowAccount();
    for (const dialog::RecentBox& recent : kRecentBoxes) dialog::FillRecentBox(*m_pTransDlg, *this, recent);
    for (const dialog::RecentBox& recent : kRecentBoxes) dialog::SelectNewest(*this, recent.combo_box);
    if (CWnd* const file = GetDlgItem(FtpControl::kFileEdit)) file->SetFocus();
    return FALSE;  // the focus is set
}

void CZelTransFTP::ReadAccount(const char* section) {
    CWinApp& app = App();
    m_strUsername = app.GetProfileStringA(section, stored::kUsername);
    m_bSavePassword = static_cast<BOOL>(app.GetProfileIntA(section, stored::kSavePassword, 0));
    if (m_bSavePassword != 0) m_strPassword = app.GetProfileStringA(section, stored::kPassword);
    if (m_bSavePassword != 0 && !m_strPassword.IsEmpty()) tools::UnscramblePassword(m_strPassword);
}

void CZelTransFTP::ShowAccount() {
    SetDlgItemText(FtpControl::kUsernameEdit, m_strUsername);
    SetDlgItemText(FtpControl::kPasswordEdit, m_strPassword);
    if (CWnd* const save = GetDlgItem(FtpControl::kSavePasswordCheck))
        save->SendMessage(BM_SETCHECK, m_bSavePassword != 0 ? BST_CHECKED : BST_UNCHECKED);
}

void CZelTransFTP::RequestHostFtp() {
    UpdateData(TRUE);
    AfxGetThread()->m_pMainWnd->SendMessage(kMsgFtp, 0, reinterpret_cast<LPARAM>(this));
    SetDlgItemText(FtpControl::kRemoteDirBox, m_strRemoteDir);
    SetDlgItemText(FtpControl::kFileEdit, m_strFile);
    for (const dialog::RecentBox& recent : kRecentBoxes) {
        CString text;
        GetDlgItemText(recent.combo_box, text);
        dialog::BringToTop(*this, recent.combo_box, text);
    }
    SaveFtpOptions();
}

void CZelTransFTP::SaveFtpOptions() {
    UpdateData(TRUE);
    dialog::StoreRecentBoxes(*m_pTransDlg, *this, kRecentBoxes);
    CWinApp& app = App();
    app.WriteProfileInt(stored::kFtpSection, stored::kOverwriteAll, m_bOverwriteAll);
    app.WriteProfileStringA(stored::kFtpSection, stored::kMessageNumber, m_strFile);
    app.WriteProfileStringA(stored::kFtpSection, stored::kIpAddress, m_strIpAddress);
    app.WriteProfileStringA(stored::kFtpSection, stored::kUsername, m_strUsername);
    app.WriteProfileInt(stored::kFtpSection, stored::kSavePassword, m_bSavePassword);
    app.WriteProfileInt(stored::kFtpSection, stored::kPassive, m_bPassive);
    if (m_bSavePassword == 0 || m_strPassword.IsEmpty()) return;
    tools::ScramblePassword(m_strPassword);
    app.WriteProfileStringA(stored::kFtpSection, stored::kPassword, m_strPassword);
}

void CZelTransFTP::OnOK() {
    UpdateData(TRUE);
    CDialog::OnOK();
}

void CZelTransFTP::OnCancel() {
    CDialog::OnCancel();
}

void CZelTransFTP::OnButtonFtpExecute() {
    m_bExecute = true;
    RequestHostFtp();
    m_bExecute = false;
}

void CZelTransFTP::OnButtonBrowseRemote() {
    RequestHostFtp();
}

void CZelTransFTP::OnButtonBrowseLocal() {
    dialog::PickedFile picked;
    if (dialog::PickFile(*this, FtpControl::kLocalDirBox, "Local Directory", picked))
        dialog::BringToTop(*this, FtpControl::kLocalDirBox, picked.directory);
}

void CZelTransFTP::OnCheckImportSkip() {
    SaveWarningPref(IgnoreZelFontErrors() ? 0 : 1);
}

void CZelTransFTP::OnCheckOverwriteAll() {
    m_bOverwriteAll = m_bOverwriteAll == 0;
}
