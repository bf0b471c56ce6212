#pragma once

#include <QDialog>
#include <QEventLoop>
#include <exception>
#include <functional>
#include <memory>
#include <vector>

#include "programs/desktop/dialogs/busy_input.h"
#include "programs/desktop/dialogs/control_view.h"

namespace zel::desktop {

/// A dialog as a real window, built from its template. The dialog's windows hold the state and this shows it; the
/// user's doings become control messages. Its size follows from the template and the font; only its place can be set.
class DialogView : public QDialog, private framework::WindowListener {
  public:
    /// @param dialog  must have its window; outlives the view. @param parent  may be null.
    DialogView(CDialog& dialog, BusyInput& input, QWidget* parent);
    ~DialogView() override;

    /// Shows the window until the dialog has ended, and throws what one of its handlers has thrown.
    void Run();

    /// Does something on the user's behalf, which may run handlers. An exception ends the dialog's run instead of
    /// passing through the event loop. @param source  the control that the user works; null for none.
    void Act(HWND source, const std::function<void()>& action);

    /// Enter, Escape and the title bar's button, as the system's dialogs take them.
    void PressEnter();
    void PressEscape();

    void MirrorChecks();
    bool Shows(const CDialog& dialog) const noexcept { return &m_dialog == &dialog; }
    bool Shows(HWND window) const noexcept { return window != nullptr && m_dialog.m_hWnd == window; }
    const std::vector<std::unique_ptr<ControlView>>& Controls() const noexcept { return m_controls; }
    /// The view of a control; null for none.
    ControlView* Find(HWND control) const;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    void WindowChanged(CWnd& window, framework::WindowChange change) override;
    void DialogChanged(framework::WindowChange change);

    void MakeControls();
    void GroupRadioButtons();
    void ChainControls();
    void NameBuddies();
    void Arrange();

    void ShowTitle();
    void ShowDefaultButton();
    void GoToStart();
    void GoToPlace();
    void TellPlace();
    void Leave();

    CDialog& m_dialog;
    BusyInput& m_input;
    std::vector<std::unique_ptr<ControlView>> m_controls;  // as in the template
    QEventLoop m_loop;
    std::exception_ptr m_error;
    QPoint m_asked;          // where the window was last sent
    bool m_telling = false;  // the dialog is told its place, and needn't be followed
    bool m_left = false;
};

}  // namespace zel::desktop
