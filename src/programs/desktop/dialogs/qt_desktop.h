#pragma once

#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

#include "platform/seam/desktop.h"
#include "programs/desktop/dialogs/busy_input.h"

namespace zel::desktop {

/// The module's screen in Qt: its dialogs are windows. Needs a QApplication and is used on its thread.
class QtDesktop : public seam::Desktop {
  public:
    /// @param main_window  parent of dialogs that no other dialog has opened; may be null.
    explicit QtDesktop(QWidget* main_window = nullptr) : m_main_window(main_window) {}

    int ShowMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT style) override;
    void RunModal(CDialog& dialog) override;
    int RunFileDialog(CFileDialog& dialog, std::string& path) override;
    bool IsKeyDown(int virtual_key) override;
    void SetWaitCursor(bool on) override;
    bool RunCommand(const std::string& command_line) override;

    /// The window of a running dialog; null if the dialog does not run.
    DialogView* Find(const CDialog& dialog) const;

  private:
    QWidget* ParentFor(HWND owner) const;

    QPointer<QWidget> m_main_window;
    BusyInput m_input;
    /// Running dialogs, the innermost last.
    std::vector<DialogView*> m_dialogs;
    bool m_wait_cursor = false;
};

}  // namespace zel::desktop
