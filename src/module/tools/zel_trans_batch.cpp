#include "module/tools/zel_trans_batch.h"

#include <cstdio>

#include "module/contract/dialog_ids.h"
#include "module/contract/export_window.h"
#include "module/contract/host_messages.h"
#include "module/contract/message_id.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/state/module_state.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/data_exchange.h"
#include "platform/framework/message_box.h"
#include "platform/system/keys.h"

namespace zel::tools {

namespace {

bool EscapePressed() {
    return GetAsyncKeyState(VK_ESCAPE) != 0;
}

void SendTo(CWnd* window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (window != nullptr) window->SendMessage(message, wParam, lParam);
}

/// Turns the host's Nuvo output off as long as the object lives, if wanted.
class NuvoOutputOff {
  public:
    NuvoOutputOff(CWnd* host, bool wanted) : m_host(wanted ? host : nullptr) {
        SendTo(m_host, kMsgNuvoOut, 1, reinterpret_cast<LPARAM>(&m_state));
        SendTo(m_host, kMsgNuvoOut, 2, 0);
    }
    ~NuvoOutputOff() { SendTo(m_host, kMsgNuvoOut, 2, m_state); }
    NuvoOutputOff(const NuvoOutputOff&) = delete;
    NuvoOutputOff& operator=(const NuvoOutputOff&) = delete;

  private:
    CWnd* m_host;
    BYTE m_state = 0;
};

}  // namespace

CZelTransBatch::CZelTransBatch(CWnd* parent)
    : CDialog(kBatchDialog, parent), m_bSkipWarnings(state::StoredSkipWarnings()) {
    SaveWarningPref(m_bSkipWarnings);
}

BEGIN_MESSAGE_MAP(CZelTransBatch, CDialog)
ON_BN_CLICKED(BatchControl::kSkipWarningsCheck, &CZelTransBatch::OnCheckSkipWarnings)
END_MESSAGE_MAP()

BOOL CZelTransBatch::Create(const char* /*className*/, const char* /*windowName*/, DWORD /*style*/,
                            const RECT& /*rect*/, CWnd* parent, UINT /*id*/, CCreateContext* /*context*/) {
    return CDialog::Create(kBatchDialog, parent);
}

void CZelTransBatch::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Text(exchange, BatchControl::kEndIdEdit, m_strEndId);
    DDX_Text(exchange, BatchControl::kStartIdEdit, m_strStartId);
    DDX_Check(exchange, BatchControl::kSkipWarningsCheck, m_bSkipWarnings);
    DDX_Check(exchange, BatchControl::kSkipNuvoOutCheck, m_bSkipNuvoOut);
}

INT_PTR CZelTransBatch::DoModal() {
    if (m_bExport == 0) {
        m_pTransDlg->GetDlgItemText(ImportControl::kMessageIdEdit, m_strStartId);
        m_pTransDlg->GetDlgItemText(ImportControl::kMessageIdEdit, m_strEndId);
    }
    return CDialog::DoModal();
}

BOOL CZelTransBatch::OnInitDialog() {
    CDialog::OnInitDialog();
    SetWindowText(m_bExport != 0 ? "Batch Export" : "Import Batch Convert");
    return 1;
}

void CZelTransBatch::OnCheckSkipWarnings() {
    SaveWarningPref(IgnoreZelFontErrors() ? 0 : 1);
    m_bSkipWarnings = IgnoreZelFontErrors() ? 1 : 0;
}

void CZelTransBatch::OnCancel() {
    CDialog::OnCancel();
}

// After a failed check the dialog stays open, with the boxes as they are.
void CZelTransBatch::OnOK() {
    UpdateData();
    {
        const NuvoOutputOff nuvo_output_off(m_pTransDlg->m_pHostWnd, m_bSkipNuvoOut != 0);
        if (!IsNumber(m_strStartId, "Non-numeric Start ID: %s", "Invalid Start ID")) return;
        if (!IsNumber(m_strEndId, "Non-numeric End ID: %s", "Invalid End ID")) return;
        const int first = MessageNumberOf(WithoutLeadingDot(m_strStartId.GetString()));
        const int last = MessageNumberOf(WithoutLeadingDot(m_strEndId.GetString()));
        if (!IsRange(first, last)) return;
        m_pTransDlg->m_bImportSkip = IgnoreZelFontErrors() ? 1 : 0;
        SaveWarningPref(m_pTransDlg->m_bImportSkip);
        Run(first, last);
    }
    CDialog::OnOK();
}

// An empty text is 0.
bool CZelTransBatch::IsNumber(const CString& text, const char* error, const char* caption) {
    const std::string_view digits = WithoutLeadingDot(text.GetString());
    if (CountDigits(digits) == digits.size()) return true;
    CString box;
    box.Format(error, static_cast<const char*>(text));
    MessageBox(box, caption, MB_OK | MB_ICONEXCLAMATION);
    return false;
}

bool CZelTransBatch::IsRange(int first, int last) {
    if (last >= 1 && last <= kLargestMessageNumber && first <= last) return true;
    CString box;
    box.Format("Invalid Range: %04d - %04d ", first, last);
    MessageBox(box, "Invalid Range", MB_OK | MB_ICONEXCLAMATION);
    return false;
}

void CZelTransBatch::Run(int first, int last) {
    CWnd& main_window = *AfxGetThread()->m_pMainWnd;
    for (int id = first; id <= last; ++id) {
        char id_text[8];
        std::snprintf(id_text, sizeof id_text, ".%04d", id);
        if (EscapePressed()) return;
        if (m_bExport != 0) {
            Export(main_window, id, id_text);
        } else if (!Import(id, id_text)) {
            return;
        }
    }
}

/// @return false if the user has stopped the run; the message is then not recorded.
bool CZelTransBatch::Import(int id, const char* id_text) {
    m_pTransDlg->SetDlgItemText(ImportControl::kMessageIdEdit, id_text);
    ShowStatus("Reading %s", id_text);
    m_pTransDlg->Read();
    if (EscapePressed()) return false;
    if (m_pTransDlg->m_iStatus != ImportStatus::kFinished) return true;
    ShowStatus("Recording %s", id_text);
    SendTo(m_pTransDlg->m_pHostWnd, kMsgRecord, 0, id);
    return true;
}

void CZelTransBatch::Export(CWnd& main_window, int id, const char* id_text) {
    const auto number = static_cast<WPARAM>(id);
    if (main_window.SendMessage(kMsgHasMessage, number, 0) == 0) return;
    ShowStatus("Exporting %s", id_text);
    const auto path = reinterpret_cast<LPARAM>(&m_strExportPath);
    // Read for each message, as the host may change it during the run.
    const auto* const export_window = dynamic_cast<const CZelExportWnd*>(m_pTransDlg->m_pExportWnd);
    if (export_window != nullptr && export_window->m_bExportFlag != 0) {
        SendTo(m_pTransDlg->m_pHostWnd, kMsgExportFlagged, number, path);
    } else {
        SendTo(m_pTransDlg->m_pExportWnd, kMsgExportPlain, number, path);
    }
    SendTo(m_pTransDlg->m_pExportWnd, kMsgExportFinish, number, path);
}

void CZelTransBatch::ShowStatus(const char* format, const char* id_text) {
    CString status;
    status.Format(format, id_text);
    SetDlgItemText(BatchControl::kStatusLabel, status);
}

}  // namespace zel::tools
