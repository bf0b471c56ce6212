#include "programs/desktop/screen_desktop.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <map>

#include <gtest/gtest.h>

#include "platform/system/files.h"
#include "programs/desktop/common/line_breaks.h"
#include "programs/desktop/dialogs/dialog_view.h"
#include "programs/desktop/dialogs/screen_text.h"

namespace zel::screen_test {

namespace {

/// In characters; a longer text is pasted.
constexpr int kMaxTyped = 40;

const std::map<int, QMessageBox::StandardButton> kButtons{
    {IDOK, QMessageBox::Ok},       {IDCANCEL, QMessageBox::Cancel}, {IDABORT, QMessageBox::Abort},
    {IDRETRY, QMessageBox::Retry}, {IDIGNORE, QMessageBox::Ignore}, {IDYES, QMessageBox::Yes},
    {IDNO, QMessageBox::No}};

void AnswerBox(int answer, const std::string& text, const std::string& caption) {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr) << "the box is not shown";
    EXPECT_EQ(desktop::WithoutBreaks(box->text()).toStdString(), desktop::ScreenText(text).remove(u'\r').toStdString());
    EXPECT_EQ(box->windowTitle().toStdString(), desktop::ScreenText(caption).toStdString());
    QAbstractButton* const button = box->button(kButtons.at(answer));
    if (button != nullptr) return Click(*button);
    ADD_FAILURE() << "the box has no such button: " << answer;
    box->done(0);
}

void AnswerFiles(int answer, const std::string& path) {
    auto* const files = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(files, nullptr) << "the file dialog is not shown";
    if (answer != IDOK) return Key(*files, Qt::Key_Escape);
    files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QFile::decodeName(path.c_str()));
    Click(*files->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open));
}

std::string ShownText(const QWidget& widget) {
    if (const auto* const edit = qobject_cast<const QLineEdit*>(&widget)) return desktop::ModuleText(edit->text());
    if (const auto* const combo = qobject_cast<const QComboBox*>(&widget))
        return desktop::ModuleText(combo->currentText());
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget))
        return desktop::ModuleText(button->text());
    return {};
}

}  // namespace

void Click(QWidget& widget) {
    const bool check =
        qobject_cast<QAbstractButton*>(&widget) != nullptr && static_cast<QAbstractButton&>(widget).isCheckable();
    const QPoint at = check ? QPoint(widget.height() / 2, widget.height() / 2) : widget.rect().center();
    QTest::mouseClick(widget.window()->windowHandle(), Qt::LeftButton, {}, widget.mapTo(widget.window(), at));
}

void Key(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window.window()->windowHandle(), key, modifiers);
}

void TypeText(QWidget& window, const QString& text) {
    if (text.size() > kMaxTyped) {
        QGuiApplication::clipboard()->setText(text);
        return Key(window, Qt::Key_V, Qt::ControlModifier);
    }
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, window.window()->windowHandle(), Qt::Key_unknown, QString(c), Qt::NoModifier);
}

void PostEscape() {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        QCoreApplication::postEvent(QGuiApplication::focusWindow(),
                                    new QKeyEvent(type, Qt::Key_Escape, Qt::NoModifier));
}

void CompareWithControls(const desktop::DialogView& view) {
    for (const auto& control : view.Controls()) {
        CWnd* const window = CWnd::FromHandle(control->Handle());
        // The dialog has ended.
        if (window == nullptr) return;
        const QWidget& widget = control->Widget();
        SCOPED_TRACE(widget.objectName().toStdString());
        EXPECT_EQ(widget.isVisible(), window->IsWindowVisible() != FALSE);
        EXPECT_EQ(widget.isEnabled(), window->IsWindowEnabled() != FALSE);
        CString text;
        window->GetWindowText(text);
        const framework::ControlKind kind = control->Source().kind;
        if (kind != framework::ControlKind::static_text && kind != framework::ControlKind::group_box &&
            kind != framework::ControlKind::list_box) {
            EXPECT_EQ(ShownText(widget), desktop::ModuleText(desktop::ScreenText(text.GetString())));
        }
        if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget)) {
            EXPECT_EQ(button->isChecked(), window->SendMessage(BM_GETCHECK) != 0);
        }
        if (const auto* const combo = qobject_cast<const QComboBox*>(&widget)) {
            EXPECT_EQ(static_cast<LRESULT>(combo->count()), window->SendMessage(CB_GETCOUNT));
        }
    }
}

void InNextWindow(std::function<void()> user) {
    QTimer::singleShot(0, std::move(user));
}

std::unique_ptr<script::HeadlessDesktop> MakeScreenDesktop() {
    return std::make_unique<ScreenDesktop>();
}

ScreenDesktop::ScreenDesktop() {
    script::SetDialogActor(this);
}
ScreenDesktop::~ScreenDesktop() {
    script::SetDialogActor(nullptr);
}

int ScreenDesktop::ShowMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT style) {
    const int answer = script::HeadlessDesktop::ShowMessageBox(owner, text, caption, style);
    InNextWindow([&] { AnswerBox(answer, text, caption); });
    EXPECT_EQ(m_screen.ShowMessageBox(owner, text, caption, style), answer);
    return answer;
}

void ScreenDesktop::RunModal(CDialog& dialog) {
    InNextWindow([&] {
        desktop::DialogView& view = *m_screen.Find(dialog);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
        CompareWithControls(view);
        view.Act(nullptr, [&] { script::HeadlessDesktop::RunModal(dialog); });
    });
    m_screen.RunModal(dialog);
}

int ScreenDesktop::RunFileDialog(CFileDialog& dialog, std::string& path) {
    const int answer = script::HeadlessDesktop::RunFileDialog(dialog, path);
    const std::string wanted = system::NativePath(path.c_str());
    InNextWindow([&] { AnswerFiles(answer, wanted); });
    EXPECT_EQ(m_screen.RunFileDialog(dialog, path), answer);
    return answer;
}

bool ScreenDesktop::IsKeyDown(int virtualKey) {
    const bool down = script::HeadlessDesktop::IsKeyDown(virtualKey);
    if (down) PostEscape();
    EXPECT_EQ(m_screen.IsKeyDown(virtualKey), down);
    return down;
}

void ScreenDesktop::SetWaitCursor(bool on) {
    script::HeadlessDesktop::SetWaitCursor(on);
    m_screen.SetWaitCursor(on);
    EXPECT_EQ(QGuiApplication::overrideCursor() != nullptr, on);
}

void ScreenDesktop::Type(CDialog& dialog, CWnd& control, const std::string& text) {
    desktop::DialogView& view = *m_screen.Find(dialog);
    Click(view.Find(control.m_hWnd)->Widget());
    Key(view, Qt::Key_A, Qt::ControlModifier);
    if (text.empty()) {
        Key(view, Qt::Key_Delete);
    } else {
        TypeText(view, desktop::ScreenText(text));
    }
    CompareWithControls(view);
}

void ScreenDesktop::Press(CDialog& dialog, CWnd& control) {
    desktop::DialogView& view = *m_screen.Find(dialog);
    Click(view.Find(control.m_hWnd)->Widget());
    CompareWithControls(view);
}

void ScreenDesktop::Choose(CDialog& dialog, CWnd& control, bool /*box*/, int index) {
    desktop::DialogView& view = *m_screen.Find(dialog);
    QWidget& widget = view.Find(control.m_hWnd)->Widget();
    auto* const combo = qobject_cast<QComboBox*>(&widget);
    if (combo != nullptr) combo->showPopup();
    QAbstractItemView& list = combo != nullptr ? *combo->view() : static_cast<QListWidget&>(widget);
    const QModelIndex entry = list.model()->index(index, 0);
    list.scrollTo(entry);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(entry).center());
    CompareWithControls(view);
}

void ScreenDesktop::PressEnter(CDialog& dialog, CWnd* /*button*/) {
    desktop::DialogView& view = *m_screen.Find(dialog);
    Key(view, Qt::Key_Return);
    CompareWithControls(view);
}

void ScreenDesktop::PressEscape(CDialog& dialog) {
    desktop::DialogView& view = *m_screen.Find(dialog);
    Key(view, Qt::Key_Escape);
}

void ScreenDesktop::Close(CDialog& dialog) {
    desktop::DialogView& view = *m_screen.Find(dialog);
    view.close();
}

}  // namespace zel::screen_test
