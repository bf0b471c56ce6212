#pragma once

#include "platform/framework/cdialog.h"

inline constexpr DWORD OFN_HIDEREADONLY = 0x4, OFN_OVERWRITEPROMPT = 0x2, OFN_EXPLORER = 0x80000;

/// The arguments and the result of a file dialog. The caller owns the texts and keeps them alive until DoModal returns.
struct OPENFILENAME {
    HWND hwndOwner;
    const char* lpstrFilter;
    /// In: the initial file name. Out: the chosen path, in the module's form.
    char* lpstrFile;
    /// Size of the buffer at lpstrFile in characters, its NUL included.
    DWORD nMaxFile;
    const char* lpstrInitialDir;
    const char* lpstrTitle;
    DWORD Flags;
    const char* lpstrDefExt;
};

/// A dialog in which the user chooses one file, shown by the current desktop. Not provided: multiple selection, custom
/// templates.
class ZEL_PLATFORM_API CFileDialog : public CDialog {
  public:
    /// @param openFileDialog  TRUE to open a file, FALSE to save one.
    /// @param filter          pairs of text and pattern, each followed by |; passed to the desktop.
    explicit CFileDialog(BOOL openFileDialog, const char* defExt = nullptr, const char* fileName = nullptr,
                         DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, const char* filter = nullptr,
                         CWnd* parent = nullptr);

    /// @return IDOK; IDCANCEL if the user cancelled or the chosen path does not fit nMaxFile.
    INT_PTR DoModal() override;

    /// The chosen path.
    CString GetPathName() const;
    /// Its part after the last separator.
    CString GetFileName() const;
    /// The file name without its extension. A name with a single leading dot, such as ".0012", is its own title.
    CString GetFileTitle() const;

    /// Filled by the constructor; the caller may change it before DoModal.
    OPENFILENAME m_ofn{};
    BOOL m_bOpenFileDialog;

  private:
    CString m_filter;
    char m_szFileName[MAX_PATH] = {};
};
