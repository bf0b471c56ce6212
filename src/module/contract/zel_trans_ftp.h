#pragma once

#include <cstdint>

#include "platform/framework/cdialog.h"
#include "platform/framework/clist.h"
#include "platform/framework/cstring.h"

class CZelTransDlg;

/// Gathers what a copy over FTP needs and keeps it for the next time. The transfer, and the browsing of the remote
/// directory, are the host's: the dialog hands it this object in kMsgFtp. The host reads the members, so their order
/// and widths are part of the contract, and no call of this class is needed for it.
///
/// Nothing is checked here; any text goes to the host. Settings are stored after each request to the host, Skip
/// Warnings at its click, and closing stores nothing.
class CZelTransFTP : public CDialog {
  public:
    /// Reads the stored address, file and options, and stores Skip Warnings as it was read.
    /// @param parent  of no account.
    explicit CZelTransFTP(CWnd* parent);

    CZelTransDlg* m_pTransDlg = nullptr;   ///< the main dialog; set right after construction.
    CZelTransFTP* m_pParentFtp = nullptr;  ///< not used by the dialog that the user sees.
    CString m_strIpAddress;                ///< server address.
    CString m_strUsername;
    BOOL m_bSavePassword = 0;
    CString m_strPassword;   ///< plain while the host is asked, in its stored form afterwards.
    CString m_strRemoteDir;  ///< the host may change it; the box shows it when the host is done.
    CString m_strLocalDir;
    CString m_strFile;        ///< as m_strRemoteDir.
    bool m_bExecute = false;  ///< the host is asked to transfer; false: to browse.
    BOOL m_bSkipWarnings = 0;
    BOOL m_bOverwriteAll = 0;
    std::int32_t m_nHostValue = 0;  ///< the host's.
    BOOL m_bPassive = 0;
    CList<CString> m_listFiles{10};  ///< the host's.

    /// Makes the dialog from its template; all arguments but the parent are passed over.
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
