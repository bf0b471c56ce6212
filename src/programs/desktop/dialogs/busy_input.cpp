#include "programs/desktop/dialogs/busy_input.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QWindow>
#include <utility>

#include "programs/desktop/dialogs/dialog_view.h"

namespace zel::desktop {

namespace {

bool IsUserInput(QEvent::Type type) {
    switch (type) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletRelease:
        case QEvent::InputMethod:
        case QEvent::Drop:
        case QEvent::Close:
            return true;
        default:
            return false;
    }
}

}  // namespace

BusyInput::BusyInput() {
    QCoreApplication::instance()->installEventFilter(this);
}

BusyInput::Running::Running(BusyInput& input, DialogView& view, HWND source) : m_input(input) {
    input.m_running.push_back({&view, source});
}

BusyInput::Running::~Running() {
    m_input.m_running.pop_back();
}

bool BusyInput::TakeEscape() {
    if (IsBusy() && !m_polling) {
        m_polling = true;
        QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
        m_polling = false;
    }
    const bool pressed = std::exchange(m_escape_pressed, false);
    return pressed || m_escape_down;
}

bool BusyInput::eventFilter(QObject* receiver, QEvent* event) {
    NoteEscape(*receiver, *event);
    if (!m_polling || !IsUserInput(event->type()) || IsAllowed(*receiver)) return false;
    if (event->type() == QEvent::Close) event->ignore();
    return true;
}

void BusyInput::NoteEscape(const QObject& receiver, const QEvent& event) {
    switch (event.type()) {
        // The key may be released in another program.
        case QEvent::ApplicationStateChange:
            m_escape_down = false;
            break;
        // A press that is a shortcut arrives only in this form.
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress:
        case QEvent::KeyRelease: {
            const auto& key = static_cast<const QKeyEvent&>(event);
            if (key.key() != Qt::Key_Escape || key.isAutoRepeat()) break;
            // A window passes its key on to widgets, possibly after a handler has run and polled it.
            if (event.type() != QEvent::ShortcutOverride && !receiver.isWindowType()) break;
            m_escape_down = event.type() != QEvent::KeyRelease;
            m_escape_pressed = m_escape_pressed || m_escape_down;
            break;
        }
        default:
            break;
    }
}

bool BusyInput::IsAllowed(const QObject& receiver) const {
    if (m_running.empty()) return true;
    const DialogView& view = *m_running.back().view;
    if (!IsInterruptible(view)) return false;
    const auto* const widget = qobject_cast<const QWidget*>(&receiver);
    return &receiver == view.windowHandle() || (widget != nullptr && widget->window() == &view);
}

bool BusyInput::IsInterruptible(const DialogView& view) const {
    const Handler& latest = m_running.back();
    return latest.view == &view && IsWindow(latest.source) && !CWnd::FromHandle(latest.source)->IsWindowEnabled();
}

}  // namespace zel::desktop
