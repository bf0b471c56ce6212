#include "module/contract/zel_trans_dlg.h"

#include "module/contract/dialog_ids.h"
#include "module/contract/host_messages.h"
#include "module/contract/stored_settings.h"
#include "module/contract/zel_font.h"
#include "module/dialog/recent_list.h"
#include "module/state/module_state.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/data_exchange.h"
#include "platform/framework/module_entry.h"
#include "platform/system/version.h"

using namespace zel;

ZEL_MODULE_STATIC CString CZelTransDlg::M_sNextMessage;

namespace {

void AppendAndSelect(CDialog& dialog, int combo_box, const char* text) {
    CWnd* const box = dialog.GetDlgItem(combo_box);
    if (box == nullptr) return;
    const LRESULT index = box->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    box->SendMessage(CB_SETCURSEL, static_cast<WPARAM>(index));
}

// The disk library that the copy button opens supports systems 5.0 and older, and 6.0.
void EnableCopyButton(CDialog& dialog) {
    CWnd* const button = dialog.GetDlgItem(ImportControl::kCopyFilesButton);
    if (button == nullptr) return;
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExA(&version);
    button->EnableWindow(version.dwMajorVersion < 5 || version.dwMinorVersion == 0 ? TRUE : FALSE);
}

void RestorePosition(CDialog& dialog) {
    CWinApp* const app = AfxGetModuleState()->m_pCurrentWinApp;
    const int x = static_cast<int>(app->GetProfileIntA(stored::kFtpSection, stored::kDialogX, 0));
    const int y = static_cast<int>(app->GetProfileIntA(stored::kFtpSection, stored::kDialogY, 0));
    if (x < 1 || x > 1999 || y < 1 || y > 1999) return;
    RECT rect{};
    dialog.GetWindowRect(&rect);
    dialog.MoveWindow(x, y, rect.right - rect.left, rect.bottom - rect.top, TRUE);
}

// Splits a message path: the directory; the id after the last backslash, without what precedes its first dot, and
// without the dot; and the font directory beside the message's. A path without two backslashes fills nothing.
void FillHiddenControls(CZelTransDlg& dialog, const CString& message_path, const CString& font_dir) {
    const int last = message_path.ReverseFind('\\');
    if (last < 0) return;
    const CString message_dir = message_path.Left(last);
    CString id = message_path.Mid(last + 1);
    const int dot = id.Find('.');
    if (dot >= 0) id = id.Mid(dot + 1);
    const int parent = message_dir.ReverseFind('\\');
    if (parent < 0) return;
    AppendAndSelect(dialog, ImportControl::kFontDirBox,
                    font_dir.IsEmpty() ? message_dir.Left(parent + 1) + "MACHINE" : font_dir);
    AppendAndSelect(dialog, ImportControl::kMessageDirBox, message_dir);
    dialog.SetDlgItemText(ImportControl::kMessageIdEdit, id);
}

}  // namespace

CZelTransDlg::CZelTransDlg(CWnd* /*parent*/) : CDialog(kImportDialog, nullptr), m_sMessageID(M_sNextMessage) {
    m_bImportSkip = state::StoredSkipWarnings();
    SaveWarningPref(m_bImportSkip);
}

CZelTransDlg::CZelTransDlg(CString& message_path, CString& font_dir) : m_sMessageID(M_sNextMessage) {
    m_bImportSkip = 1;
    SaveWarningPref(1);
    CDialog::Create(kImportDialog, nullptr);
    FillHiddenControls(*this, message_path, font_dir);
}

CZelTransDlg::~CZelTransDlg() = default;

// A change of the id arrives as notification 1024, which an edit sends before it shows the new text.
BEGIN_MESSAGE_MAP(CZelTransDlg, CDialog)
ON_BN_CLICKED(ImportControl::kBrowseFontButton, &CZelTransDlg::OnButtonBrowserFont)
ON_BN_CLICKED(ImportControl::kReadButton, &CZelTransDlg::OnButtonRead)
ON_BN_CLICKED(ImportControl::kBrowseMessageButton, &CZelTransDlg::OnButtonBrowserMessage)
ON_BN_CLICKED(ImportControl::kTrueFontCheck, &CZelTransDlg::OnCheckTrueFont)
ON_BN_CLICKED(ImportControl::kBaselineAlignCheck, &CZelTransDlg::OnCheckBaselineAlign)
ON_BN_CLICKED(ImportControl::kBatchButton, &CZelTransDlg::OnButtonZeltransBatch)
ON_BN_CLICKED(ImportControl::kSkipWarningsCheck, &CZelTransDlg::OnCheckImportSkip)
ON_WM_CLOSE()
ON_BN_CLICKED(ImportControl::kCopyFilesButton, &CZelTransDlg::OnButtonZeltransCopyFiles)
ON_BN_CLICKED(ImportControl::kFtpButton, &CZelTransDlg::OnButtonZeltransFTP)
ON_EN_UPDATE(ImportControl::kMessageIdEdit, &CZelTransDlg::OnMessageNameChanged)
END_MESSAGE_MAP()

void CZelTransDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, ImportControl::kMessageIdEdit, m_sMessageID);
    DDX_Check(exchange, ImportControl::kTrueFontCheck, m_bTrueFont);
    DDX_Check(exchange, ImportControl::kBaselineAlignCheck, m_bBaselineAlign);
    DDX_Check(exchange, ImportControl::kSkipWarningsCheck, m_bImportSkip);
}

BOOL CZelTransDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    AfxGetThread()->m_pMainWnd->SendMessage(kMsgDialogReady, 0, reinterpret_cast<LPARAM>(this));
    for (const dialog::RecentBox& recent : dialog::kDirectoryBoxes) dialog::FillRecentBox(*this, *this, recent);
    for (const dialog::RecentBox& recent : dialog::kDirectoryBoxes) dialog::SelectNewest(*this, recent.combo_box);
    EnableCopyButton(*this);
    if (CWnd* const edit = GetDlgItem(ImportControl::kMessageIdEdit))
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(edit->m_hWnd), 1);
    RestorePosition(*this);
    return FALSE;  // the focus is set
}

void CZelTransDlg::OnOK() {
    SavePath();
    CDialog::OnOK();
}

void CZelTransDlg::OnCancel() {
    SavePath();
    CDialog::OnCancel();
}

void CZelTransDlg::OnCheckTrueFont() {
    m_bTrueFont = m_bTrueFont == 0;
}

void CZelTransDlg::OnCheckBaselineAlign() {
    m_bBaselineAlign = m_bBaselineAlign == 0;
}

void CZelTransDlg::OnCheckImportSkip() {
    SaveWarningPref(IgnoreZelFontErrors() ? 0 : 1);
}

// Makes Enter press the Read button.
void CZelTransDlg::OnMessageNameChanged() {
    SendMessage(DM_SETDEFID, ImportControl::kReadButton);
}
