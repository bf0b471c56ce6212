#pragma once

#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

#include "platform/seam/desktop.h"
#include "programs/desktop/dialogs/busy_input.h"

namespace zel::desktop {

/// A screen by Qt: the module's dialogs are real windows. Needs the application object, and is used on its thread.
class QtDesktop : public seam::Desktop {
  public:
    /// @param mainWindow  over which dialogs open that no other dialog has opened; may be null.
    explicit QtDesktop(QWidget* mainWindow = nullptr) : m_mainWindow(mainWindow) {}

    int ShowMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT style) override;
    void RunModal(CDialog& dialog) override;
    int RunFileDialog(CFileDialog& dialog, std::string& path) override;
    bool IsKeyDown(int virtualKey) override;
    void SetWaitCursor(bool on) override;
    bool RunCommand(const std::string& commandLine) override;

    /// The window of a dialog that runs; null for none.
    DialogView* Find(const CDialog& dialog) const;

  private:
    QWidget* ParentFor(HWND owner) const;

    QPointer<QWidget> m_mainWindow;
    BusyInput m_input;
    std::vector<DialogView*> m_dialogs;  // that run, the innermost last
    bool m_waitCursor = false;
};

}  // namespace zel::desktop
