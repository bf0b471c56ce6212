#pragma once

#include "platform/framework/cdialog.h"
#include "platform/framework/cstring.h"

class CZelTransDlg;

namespace zel::tools {

/// The dialog for a range of numbered messages. It imports each and requests the host to record it or, in export mode,
/// requests the host to export those that it has. ESC stops a run. The dialog closes after a run.
class CZelTransBatch : public CDialog {
  public:
    explicit CZelTransBatch(CWnd* parent);

    /// The import dialog, set directly after construction. In export mode it has no window.
    CZelTransDlg* m_pTransDlg = nullptr;
    CString m_strEndId;
    CString m_strStartId;
    BOOL m_bSkipWarnings;
    /// Non-zero: turn the host's Nuvo output off during the run. The check box is hidden.
    BOOL m_bSkipNuvoOut = 0;
    /// Non-zero: export mode.
    BOOL m_bExport = 0;
    /// Passed to the host with each export message.
    CString m_strExportPath;

    using CDialog::Create;
    /// Creates the dialog from its template, modeless. Uses the parent and ignores the other arguments.
    BOOL Create(const char* className, const char* windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                CCreateContext* context = nullptr) override;

    /// In import mode both boxes start with the message id of the import dialog.
    INT_PTR DoModal() override;

  protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    afx_msg void OnCheckSkipWarnings();

    DECLARE_MESSAGE_MAP()

  private:
    bool IsNumber(const CString& text, const char* error, const char* caption);
    bool IsRange(int first, int last);
    void Run(int first, int last);
    bool Import(int id, const char* id_text);
    void Export(CWnd& main_window, int id, const char* id_text);
    void ShowStatus(const char* format, const char* id_text);
};

}  // namespace zel::tools
