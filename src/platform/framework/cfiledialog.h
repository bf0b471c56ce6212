#pragma once

#include "platform/framework/cdialog.h"

inline constexpr DWORD OFN_HIDEREADONLY = 0x4, OFN_OVERWRITEPROMPT = 0x2, OFN_EXPLORER = 0x80000;

/// What a file dialog is told and gives back. The texts are the caller's and must live until DoModal has returned.
struct OPENFILENAME {
    HWND hwndOwner;
    const char* lpstrFilter;
    char* lpstrFile;  // in: the initial file name; out: the chosen path in the module's form
    DWORD nMaxFile;   // characters that lpstrFile has room for, its NUL included
    const char* lpstrInitialDir;
    const char* lpstrTitle;
    DWORD Flags;
    const char* lpstrDefExt;
};

/// A dialog that lets the user pick one file, shown by the current desktop. Left out: multiple selection, custom
/// templates.
class ZEL_PLATFORM_API CFileDialog : public CDialog {
  public:
    /// @param openFileDialog  TRUE for opening, FALSE for saving.
    /// @param filter  pairs of text and pattern, separated and ended by |; kept, not applied.
    explicit CFileDialog(BOOL openFileDialog, const char* defExt = nullptr, const char* fileName = nullptr,
                         DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, const char* filter = nullptr,
                         CWnd* parent = nullptr);

    /// @return IDOK, or IDCANCEL; IDCANCEL too when the chosen path doesn't fit nMaxFile.
    INT_PTR DoModal() override;

    /// The chosen path, its part behind the last separator, and that part without its extension. A name that is nothing
    /// but extension, such as ".0012", is its own title.
    CString GetPathName() const;
    CString GetFileName() const;
    CString GetFileTitle() const;

    OPENFILENAME m_ofn{};  // set up by the constructor; the caller may change it before DoModal
    BOOL m_bOpenFileDialog;

  private:
    CString m_filter;
    char m_szFileName[MAX_PATH] = {};
};
