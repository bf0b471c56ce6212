#pragma once

#include "platform/framework/cdialog.h"
#include "platform/framework/cstring.h"

class CZelTransDlg;

namespace zel::tools {

/// Runs over a range of numbered messages: imports each and has the host record it, or, in export mode, has the host
/// export those that it holds. ESC ends a run; a run always closes the dialog.
class CZelTransBatch : public CDialog {
  public:
    explicit CZelTransBatch(CWnd* parent);

    CZelTransDlg* m_pTransDlg =
        nullptr;  ///< the main dialog; set right after construction. Has no window in export mode.
    CString m_strEndId;
    CString m_strStartId;
    BOOL m_bSkipWarnings;
    BOOL m_bSkipNuvoOut = 0;  ///< turn the host's Nuvo output off for the run; the dialog hides the choice.
    BOOL m_bExport = 0;       ///< non-zero: export mode.
    CString m_strExportPath;  ///< the host's, handed back with each export message.

    using CDialog::Create;
    /// Modeless; all but the parent is of no account.
    BOOL Create(const char* className, const char* windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                CCreateContext* context = nullptr) override;

    /// In import mode both boxes open with the main dialog's message id.
    INT_PTR DoModal() override;

  protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    afx_msg void OnCheckSkipWarnings();

    DECLARE_MESSAGE_MAP()

  private:
    bool IsNumber(const CString& text, const char* trouble, const char* caption);
    bool IsRange(int first, int last);
    void Run(int first, int last);
    bool Import(int id, const char* id_text);
    void Export(CWnd& main_window, int id, const char* id_text);
    void ShowStatus(const char* format, const char* id_text);
};

}  // namespace zel::tools
