#pragma once

#include <string>

#include "platform/api.h"
#include "platform/system/types.h"

class CDialog;
class CFileDialog;

namespace zel::seam {

/// What a screen must be able to do. All calls come on the user-interface thread; each returns when the user has
/// answered.
class ZEL_PLATFORM_API Desktop {
  public:
    virtual ~Desktop();

    /// Shows a message box. @param owner  may be null. @param style  MB_ values. @return IDOK, IDCANCEL, IDYES, IDNO
    /// ...
    virtual int ShowMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT style) = 0;

    /// Runs a dialog, whose window and controls exist and are shown, until dialog.HasEnded(). A screen mirrors it by
    /// its template, its controls' messages and a WindowListener. An exception of a handler may pass out of it.
    virtual void RunModal(CDialog& dialog) = 0;

    /// Lets the user pick a file, as dialog.m_ofn tells. @param path  receives the path, in this system's or the
    /// module's form.
    /// @return IDOK or IDCANCEL.
    virtual int RunFileDialog(CFileDialog& dialog, std::string& path) = 0;

    /// Whether a key is down, or has been pressed since the last asking.
    virtual bool IsKeyDown(int virtualKey) = 0;

    virtual void SetWaitCursor(bool on) = 0;

    /// Shows the text file that a command line such as "Notepad FILE" names; it is never run as a command.
    /// @return false when it can't be shown.
    virtual bool RunCommand(const std::string& commandLine) = 0;
};

/// Makes a desktop the current one, null for the default: a HeadlessDesktop without a script. The caller keeps it
/// alive.
/// @return the one before, null if that was the default.
ZEL_PLATFORM_API Desktop* SetDesktop(Desktop* desktop);
ZEL_PLATFORM_API Desktop& GetDesktop();

/// Sets what makes the default desktop; called once, while the platform is loaded. @return true.
bool SetDefaultDesktop(Desktop* (*make)()) noexcept;

}  // namespace zel::seam
