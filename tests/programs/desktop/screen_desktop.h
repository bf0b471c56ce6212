#pragma once

#include <functional>

#include "programs/desktop/dialogs/qt_desktop.h"
#include "programs/desktop/make_screen_desktop.h"

namespace zel::screen_test {

/// Runs the same scripts as a desktop without a screen, but shows every window: the script's user presses the widgets'
/// buttons, types into them, and answers boxes. Each answer is compared with the script's, and each window with the
/// controls that it shows.
class ScreenDesktop : public script::HeadlessDesktop, private script::DialogActor {
  public:
    ScreenDesktop();
    ~ScreenDesktop() override;

    int ShowMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT style) override;
    void RunModal(CDialog& dialog) override;
    int RunFileDialog(CFileDialog& dialog, std::string& path) override;
    bool IsKeyDown(int virtualKey) override;
    void SetWaitCursor(bool on) override;

  private:
    void Type(CDialog& dialog, CWnd& control, const std::string& text) override;
    void Press(CDialog& dialog, CWnd& control) override;
    void Choose(CDialog& dialog, CWnd& control, bool box, int index) override;
    void PressEnter(CDialog& dialog, CWnd* button) override;
    void PressEscape(CDialog& dialog) override;
    void Close(CDialog& dialog) override;

    desktop::QtDesktop m_screen;
};

// Input through the window system: into the active window.
void Click(QWidget& widget);
void Key(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void TypeText(QWidget& window, const QString& text);
/// Posts the key as the window system does during a run.
void PostEscape();

/// Fails unless every widget shows the state of its control.
void CompareWithControls(const desktop::DialogView& view);

/// Calls `user` from the event loop, when the next window is open.
void InNextWindow(std::function<void()> user);

}  // namespace zel::screen_test
