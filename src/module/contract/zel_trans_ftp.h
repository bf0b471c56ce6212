#pragma once

#include <cstdint>

#include "platform/framework/cdialog.h"
#include "platform/framework/clist.h"
#include "platform/framework/cstring.h"

class CZelTransDlg;

/// The dialog that requests a copy over FTP. It collects the account, the directories and the options, and stores them
/// for the next time. The host does the transfer and browses the remote directory: it receives this object in kMsgFtp.
/// The host reads the members, whose order and widths are part of the contract; it needs to call no member function.
///
/// The dialog checks nothing: it accepts any text. It stores its settings after each request, and Skip Warnings
/// when the box is clicked. Closing it stores nothing.
class CZelTransFTP : public CDialog {
  public:
    /// Reads the stored address, file and options, and stores Skip Warnings as it was read.
    /// @param parent  passed to CDialog, which does not use it.
    explicit CZelTransFTP(CWnd* parent);

    /// The import dialog, set directly after construction.
    CZelTransDlg* m_pTransDlg = nullptr;
    /// Not used by the dialog that the user sees.
    CZelTransFTP* m_pParentFtp = nullptr;
    /// Name or address of the server.
    CString m_strIpAddress;
    CString m_strUsername;
    BOOL m_bSavePassword = 0;
    /// Plain while the host handles kMsgFtp, in its stored form afterwards.
    CString m_strPassword;
    /// The host may change it: the dialog shows it when kMsgFtp returns.
    CString m_strRemoteDir;
    /// In the module's form.
    CString m_strLocalDir;
    /// Name of the file to copy. The host may change it: the dialog shows it when kMsgFtp returns.
    CString m_strFile;
    /// True: the host is to transfer. False: it is to browse.
    bool m_bExecute = false;
    BOOL m_bSkipWarnings = 0;
    BOOL m_bOverwriteAll = 0;
    /// For the host; the module does not use it.
    std::int32_t m_nHostValue = 0;
    BOOL m_bPassive = 0;
    /// For the host; the module does not use it.
    CList<CString> m_listFiles{10};

    /// Creates the dialog from its template, modeless. Uses the parent and ignores the other arguments.
    BOOL Create(const char* className, const char* windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                CCreateContext* context = nullptr) override;
    INT_PTR DoModal() override;

  protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    afx_msg void OnButtonBrowseLocal();
    afx_msg void OnButtonBrowseRemote();
    afx_msg void OnButtonFtpExecute();
    afx_msg void OnCheckImportSkip();
    afx_msg void OnCheckOverwriteAll();

    DECLARE_MESSAGE_MAP()

  private:
    void ReadAccount(const char* section);
    void ShowAccount();
    void RequestHostFtp();
    void SaveFtpOptions();
};
