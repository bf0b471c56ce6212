#include "programs/desktop/dialogs/dialog_view.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "programs/desktop/dialogs/dialog_units.h"
#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

namespace ctl = framework::ctl;

namespace {

bool IsEnter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool IsTabStop(const ControlView& control) {
    return (control.Source().flags & ctl::tab_stop) != 0;
}

/// The position nearest to `wanted` at which a window of this size is completely visible, if a screen is large enough.
QPoint OnScreen(const QPoint& wanted, const QSize& size) {
    const QScreen* screen = QGuiApplication::screenAt(wanted);
    if (screen == nullptr) screen = QGuiApplication::primaryScreen();
    const QRect room = screen->availableGeometry();
    const auto inside = [](int at, int extent, int first, int room_extent) {
        return std::max(first, std::min(at, first + room_extent - extent));
    };
    return {inside(wanted.x(), size.width(), room.x(), room.width()),
            inside(wanted.y(), size.height(), room.y(), room.height())};
}

}  // namespace

DialogView::DialogView(CDialog& dialog, BusyInput& input, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint),
      m_dialog(dialog),
      m_input(input) {
    setWindowModality(Qt::ApplicationModal);
    setObjectName(QStringLiteral("dialog_%1").arg(dialog.GetTemplateId()));
    MakeControls();
    GroupRadioButtons();
    OrderTabStops();
    AssignBuddies();
    for (const auto& control : m_controls) control->MirrorAll();
    ShowTitle();
    ShowDefaultButton();
    Arrange();
    m_dialog.AddChangeListener(*this);
}

DialogView::~DialogView() {
    m_dialog.RemoveChangeListener(*this);
}

void DialogView::Run() {
    MoveToStart();
    show();
    // This reason selects the text of a field.
    if (ControlView* const focused = CWnd::GetFocus() != nullptr ? Find(CWnd::GetFocus()->m_hWnd) : nullptr)
        focused->Widget().setFocus(Qt::TabFocusReason);
    activateWindow();
    if (!m_ended) m_loop.exec();
    if (m_error) std::rethrow_exception(std::exchange(m_error, nullptr));
    // The loop also ends with the program.
    if (m_dialog.m_hWnd != nullptr && !m_dialog.HasEnded()) m_dialog.EndDialog(IDCANCEL);
}

void DialogView::Act(HWND source, const std::function<void()>& action) {
    if (m_ended || m_input.IsBlocked(*this)) return;
    const BusyInput::Running running(m_input, *this, source);
    try {
        action();
    } catch (...) {
        m_error = std::current_exception();
        End();
    }
}

void DialogView::PressEnter() {
    const UINT id = m_dialog.GetDefID() != 0 ? m_dialog.GetDefID() : static_cast<UINT>(IDOK);
    const CWnd* const control = m_dialog.GetDlgItem(static_cast<int>(id));
    ControlView* const button = control != nullptr ? Find(control->m_hWnd) : nullptr;
    if (button == nullptr) {
        Act(nullptr, [&] { m_dialog.SendMessage(WM_COMMAND, id); });
    } else if (auto* const push = qobject_cast<QPushButton*>(&button->Widget()); push != nullptr && push->isVisible()) {
        // A disabled button ignores it.
        push->click();
    }
}

void DialogView::PressEscape() {
    Act(nullptr, [&] { m_dialog.SendMessage(WM_COMMAND, IDCANCEL); });
}

void DialogView::MirrorChecks() {
    if (m_ended) return;
    for (const auto& control : m_controls) control->Mirror(framework::WindowChange::check);
}

ControlView* DialogView::Find(HWND control) const {
    const auto found = std::find_if(m_controls.begin(), m_controls.end(),
                                    [control](const auto& view) { return view->Handle() == control; });
    return found != m_controls.end() ? found->get() : nullptr;
}

void DialogView::keyPressEvent(QKeyEvent* event) {
    auto* const focused = qobject_cast<QPushButton*>(focusWidget());
    if (event->key() == Qt::Key_Escape) {
        PressEscape();
    } else if (IsEnter(event->key()) && focused != nullptr) {
        focused->click();
    } else if (IsEnter(event->key())) {
        PressEnter();
    } else {
        event->ignore();
    }
}

void DialogView::closeEvent(QCloseEvent* event) {
    // The dialog decides whether it closes.
    event->ignore();
    Act(nullptr, [&] { m_dialog.SendMessage(WM_CLOSE); });
}

void DialogView::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    if (isVisible() && pos() != m_requested) ReportPosition();
}

void DialogView::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (!m_ended && (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)) Arrange();
}

/// Fields would consume Enter and Escape, which are the dialog's. A wheel must not change a combo box that it scrolls
/// over.
bool DialogView::eventFilter(QObject* receiver, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        const auto owner = std::find_if(m_controls.begin(), m_controls.end(),
                                        [receiver](const auto& view) { return &view->Widget() == receiver; });
        if (owner != m_controls.end() && !m_ended) CWnd::FromHandle((*owner)->Handle())->SetFocus();
    } else if (event->type() == QEvent::KeyPress) {
        auto* const key = static_cast<QKeyEvent*>(event);
        const bool button = qobject_cast<QAbstractButton*>(receiver) != nullptr;
        if (!button && (IsEnter(key->key()) || key->key() == Qt::Key_Escape)) {
            keyPressEvent(key);
            return true;
        }
    } else if (event->type() == QEvent::Wheel && qobject_cast<QComboBox*>(receiver) != nullptr) {
        return true;
    }
    return QDialog::eventFilter(receiver, event);
}

void DialogView::WindowChanged(CWnd& window, framework::WindowChange change) {
    if (m_ended) return;
    if (window.m_hWnd == m_dialog.m_hWnd) {
        DialogChanged(change);
    } else if (ControlView* const control = Find(window.m_hWnd)) {
        control->Mirror(change);
    }
}

void DialogView::DialogChanged(framework::WindowChange change) {
    switch (change) {
        case framework::WindowChange::text:
            ShowTitle();
            break;
        case framework::WindowChange::enabled:
            setEnabled(m_dialog.IsWindowEnabled() != FALSE);
            break;
        case framework::WindowChange::visible:
            setVisible(m_dialog.IsWindowVisible() != FALSE);
            break;
        case framework::WindowChange::rect:
            if (!m_reporting) FollowPosition();
            break;
        case framework::WindowChange::default_button:
            ShowDefaultButton();
            break;
        case framework::WindowChange::ended:
        case framework::WindowChange::destroyed:
            End();
            break;
        case framework::WindowChange::check:
        case framework::WindowChange::list:
        case framework::WindowChange::selection:
        case framework::WindowChange::focus:
            break;
    }
}

void DialogView::MakeControls() {
    const framework::DialogTemplate& source = *m_dialog.GetTemplate();
    for (std::size_t i = 0; i < source.controls.size(); ++i) {
        CWnd* const control = m_dialog.GetControl(i);
        if (control == nullptr) continue;
        m_controls.push_back(MakeControlView(*this, source.controls[i], *control));
        m_controls.back()->Widget().installEventFilter(this);
    }
}

/// Within a group the arrow keys move between buttons, and Tab goes to the checked one.
void DialogView::GroupRadioButtons() {
    QButtonGroup* group = nullptr;
    for (const auto& control : m_controls) {
        if ((control->Source().flags & ctl::group) != 0) group = nullptr;
        auto* const radio = qobject_cast<QRadioButton*>(&control->Widget());
        if (radio == nullptr || (control->Source().flags & ctl::automatic) == 0) continue;
        if (group == nullptr) group = new QButtonGroup(this);
        group->addButton(radio);
    }
}

void DialogView::OrderTabStops() {
    QWidget* before = nullptr;
    for (const auto& control : m_controls) {
        QWidget& widget = control->Widget();
        if (widget.focusPolicy() == Qt::NoFocus) continue;
        const bool radio = qobject_cast<QRadioButton*>(&widget) != nullptr;
        if (!radio) widget.setFocusPolicy(IsTabStop(*control) ? Qt::StrongFocus : Qt::ClickFocus);
        if (before != nullptr) setTabOrder(before, &widget);
        before = &widget;
    }
}

/// The access key of a label moves the focus to the next tab stop.
void DialogView::AssignBuddies() {
    QLabel* waiting = nullptr;
    for (const auto& control : m_controls) {
        const char* const text = control->Source().text;
        if (auto* const label = qobject_cast<QLabel*>(&control->Widget())) {
            waiting = text != nullptr && std::string_view(text).find('&') != std::string_view::npos ? label : nullptr;
        } else if (waiting != nullptr && IsTabStop(*control)) {
            waiting->setBuddy(&control->Widget());
            waiting = nullptr;
        }
    }
}

void DialogView::Arrange() {
    const framework::DialogTemplate& source = *m_dialog.GetTemplate();
    DialogUnits units{QFontMetricsF(font())};
    for (const auto& control : m_controls) {
        if ((control->Source().flags & ctl::hidden) == 0) units.MakeRoom(control->Units(), control->Needed());
    }
    for (const auto& control : m_controls) {
        const QSizeF size = control->Units();
        control->Widget().setGeometry(
            units.Pixels(control->Source().x, control->Source().y, size.width(), size.height()));
    }
    setFixedSize(units.Pixels(0, 0, source.cx, source.cy).size());
}

void DialogView::ShowTitle() {
    CString title;
    m_dialog.GetWindowText(title);
    setWindowTitle(ScreenText(title.GetString()));
}

void DialogView::ShowDefaultButton() {
    for (const auto& control : m_controls) {
        auto* const button = qobject_cast<QPushButton*>(&control->Widget());
        if (button == nullptr) continue;
        const bool is_default =
            m_dialog.GetDefID() != 0 && control->Source().id == static_cast<int>(m_dialog.GetDefID());
        button->setDefault(is_default);
    }
}

/// A dialog without a position opens in the middle of its parent or of the screen.
void DialogView::MoveToStart() {
    RECT rect{};
    m_dialog.GetWindowRect(&rect);
    const bool placed = rect.left != 0 || rect.top != 0;
    const QWidget* const over = parentWidget();
    const QRect room = over != nullptr && over->isVisible() ? over->frameGeometry()
                                                            : QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint start = room.center() - QPoint(width() / 2, height() / 2);
    m_requested = OnScreen(placed ? QPoint(rect.left, rect.top) : start, frameSize());
    move(m_requested);
    const QPoint position = placed ? QPoint(rect.left, rect.top) : m_requested;
    m_reporting = true;
    m_dialog.MoveWindow(position.x(), position.y(), frameSize().width(), frameSize().height());
    m_reporting = false;
}

void DialogView::FollowPosition() {
    RECT rect{};
    m_dialog.GetWindowRect(&rect);
    m_requested = OnScreen({rect.left, rect.top}, frameSize());
    move(m_requested);
}

void DialogView::ReportPosition() {
    if (m_ended) return;
    m_reporting = true;
    m_dialog.MoveWindow(x(), y(), frameSize().width(), frameSize().height());
    m_reporting = false;
}

void DialogView::End() {
    m_ended = true;
    hide();
    m_loop.quit();
}

}  // namespace zel::desktop
