#include "programs/desktop/dialogs/qt_desktop.h"

#include <QGuiApplication>
#include <algorithm>
#include <utility>

#include "platform/framework/cfiledialog.h"
#include "programs/desktop/dialogs/dialog_view.h"
#include "programs/desktop/dialogs/file_dialog.h"
#include "programs/desktop/dialogs/message_box.h"
#include "programs/desktop/dialogs/text_viewer.h"

namespace zel::desktop {

namespace {

/// Shows the plain cursor while the user has to answer, also during a run.
class PlainCursor {
  public:
    PlainCursor(QtDesktop& desktop, bool waiting) : m_desktop(desktop), m_waiting(waiting) {
        m_desktop.SetWaitCursor(false);
    }
    ~PlainCursor() { m_desktop.SetWaitCursor(m_waiting); }
    PlainCursor(const PlainCursor&) = delete;
    PlainCursor& operator=(const PlainCursor&) = delete;

  private:
    QtDesktop& m_desktop;
    bool m_waiting;
};

/// Registers a dialog as running during the lifetime of the object.
class RunningDialog {
  public:
    RunningDialog(std::vector<DialogView*>& list, DialogView& dialog) : m_list(list) { m_list.push_back(&dialog); }
    ~RunningDialog() { m_list.pop_back(); }
    RunningDialog(const RunningDialog&) = delete;
    RunningDialog& operator=(const RunningDialog&) = delete;

  private:
    std::vector<DialogView*>& m_list;
};

}  // namespace

int QtDesktop::ShowMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT style) {
    const PlainCursor plain(*this, m_wait_cursor);
    return RunMessageBox(ParentFor(owner), text, caption, style);
}

void QtDesktop::RunModal(CDialog& dialog) {
    const PlainCursor plain(*this, m_wait_cursor);
    DialogView view(dialog, m_input, ParentFor(nullptr));
    const RunningDialog running(m_dialogs, view);
    view.Run();
}

int QtDesktop::RunFileDialog(CFileDialog& dialog, std::string& path) {
    const PlainCursor plain(*this, m_wait_cursor);
    return PickFile(ParentFor(dialog.m_ofn.hwndOwner), dialog, path);
}

bool QtDesktop::IsKeyDown(int virtual_key) {
    return virtual_key == VK_ESCAPE && m_input.TakeEscape();
}

void QtDesktop::SetWaitCursor(bool on) {
    if (std::exchange(m_wait_cursor, on) == on) return;
    if (on) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

bool QtDesktop::RunCommand(const std::string& command_line) {
    return ShowTextFile(ParentFor(nullptr), command_line);
}

DialogView* QtDesktop::Find(const CDialog& dialog) const {
    const auto found =
        std::find_if(m_dialogs.begin(), m_dialogs.end(), [&](const DialogView* view) { return view->Shows(dialog); });
    return found != m_dialogs.end() ? *found : nullptr;
}

/// The owner's window, else the innermost visible dialog, else the main window.
QWidget* QtDesktop::ParentFor(HWND owner) const {
    for (DialogView* const view : m_dialogs) {
        if (view->Shows(owner) && view->isVisible()) return view;
    }
    const auto seen =
        std::find_if(m_dialogs.rbegin(), m_dialogs.rend(), [](const DialogView* view) { return view->isVisible(); });
    return seen != m_dialogs.rend() ? *seen : m_main_window.data();
}

}  // namespace zel::desktop
