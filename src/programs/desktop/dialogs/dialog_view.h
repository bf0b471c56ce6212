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

/// A dialog as a window, built from its template. The dialog's own windows hold the state, which this shows; user
/// actions become control messages. The size follows from the template and the font; only the position can be set.
class DialogView : public QDialog, private framework::WindowListener {
  public:
    /// @param dialog  has its window; outlives the view.
    /// @param parent  may be null.
    DialogView(CDialog& dialog, BusyInput& input, QWidget* parent);
    ~DialogView() override;

    /// Shows the window until the dialog has ended. Rethrows an exception of one of its handlers.
    void Run();

    /// Performs a user action, which may call handlers. An exception ends Run, which rethrows it; it never passes
    /// through the event loop.
    /// @param source  the control that the user operates; null for none.
    void Act(HWND source, const std::function<void()>& action);

    /// Handle Enter and Escape as in any dialog.
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
    void OrderTabStops();
    void AssignBuddies();
    void Arrange();

    void ShowTitle();
    void ShowDefaultButton();
    void MoveToStart();
    void FollowPosition();
    void ReportPosition();
    void End();

    CDialog& m_dialog;
    BusyInput& m_input;
    /// In the order of the template.
    std::vector<std::unique_ptr<ControlView>> m_controls;
    QEventLoop m_loop;
    std::exception_ptr m_error;
    /// Position of the last move by the program.
    QPoint m_requested;
    /// The change of position is this view's own report.
    bool m_reporting = false;
    bool m_ended = false;
};

}  // namespace zel::desktop
