#pragma once

#include <string>

#include "platform/api.h"

class CDialog;
class CFileDialog;
struct HWND__;

namespace zel::seam {

/// What a screen must be able to do. All calls are made on the user-interface thread. Each returns when the user has
/// answered.
class ZEL_PLATFORM_API Desktop {
  public:
    virtual ~Desktop();

    /// Shows a message box.
    /// @param owner  handle of the owner's window; may be null.
    /// @param style  MB_ values.
    /// @return IDOK, IDCANCEL, IDYES, IDNO ...
    virtual int ShowMessageBox(HWND__* owner, const std::string& text, const std::string& caption, unsigned style) = 0;

    /// Runs a dialog until dialog.HasEnded(). Its window and controls exist and are shown. A screen mirrors it through
    /// its template, its controls' messages and a WindowListener. An exception of a handler may leave this function.
    virtual void RunModal(CDialog& dialog) = 0;

    /// Lets the user choose a file, as dialog.m_ofn describes.
    /// @param path  receives the path, in this system's or the module's form.
    /// @return IDOK or IDCANCEL.
    virtual int RunFileDialog(CFileDialog& dialog, std::string& path) = 0;

    /// Whether a key is down, or has been pressed since the last call for it.
    virtual bool IsKeyDown(int virtualKey) = 0;

    virtual void SetWaitCursor(bool on) = 0;

    /// Shows the text file named in a command line such as "Notepad FILE". The line is never run as a command.
    /// @return false when the file can't be shown.
    virtual bool RunCommand(const std::string& commandLine) = 0;
};

/// Makes a desktop the current one. The caller keeps it alive.
/// @param desktop  null for the default, a HeadlessDesktop without a script.
/// @return the previous one, null if that was the default.
ZEL_PLATFORM_API Desktop* SetDesktop(Desktop* desktop);
ZEL_PLATFORM_API Desktop& GetDesktop();

/// Sets the function that creates the default desktop. Called once, while the platform is loaded.
/// @return true, for the initialiser of a constant.
bool SetDefaultDesktop(Desktop* (*make)()) noexcept;

}  // namespace zel::seam
