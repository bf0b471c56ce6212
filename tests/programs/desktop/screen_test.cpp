// The screen apart from dialogs: boxes, files, the ESC key during a run, the cursor, the viewer.
#include <QFileDialog>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTemporaryDir>
#include <QTreeView>
#include <QWindow>
#include <fstream>

#include <gmock/gmock.h>

#include "platform/framework/cfiledialog.h"
#include "platform/framework/message_box.h"
#include "platform/framework/wait_cursor.h"
#include "platform/system/commands.h"
#include "platform/system/files.h"
#include "platform/system/keys.h"
#include "programs/desktop/test_window.h"

namespace zel::screen_test {

namespace {

using Screen = OnScreen;

struct BoxCase {
    UINT style;
    QMessageBox::Icon icon;
    std::size_t buttons;
    int enter;
    /// 0 if Escape does nothing.
    int escape;
};

TEST_F(Screen, BoxesHaveIconsAndButtonsByStyle) {
    constexpr UINT kSecond = 0x100;
    for (const BoxCase& row : {BoxCase{MB_OK, QMessageBox::NoIcon, 1, IDOK, IDOK},
                               {MB_OKCANCEL | MB_ICONHAND, QMessageBox::Critical, 2, IDOK, IDCANCEL},
                               {MB_YESNO | MB_ICONQUESTION, QMessageBox::Question, 2, IDYES, 0},
                               {MB_YESNO | kSecond, QMessageBox::NoIcon, 2, IDNO, 0},
                               {MB_YESNOCANCEL | MB_ICONEXCLAMATION, QMessageBox::Warning, 3, IDYES, IDCANCEL},
                               {MB_RETRYCANCEL | MB_ICONASTERISK, QMessageBox::Information, 2, IDRETRY, IDCANCEL},
                               {MB_ABORTRETRYIGNORE, QMessageBox::NoIcon, 3, IDABORT, 0}}) {
        for (const bool escape : {false, true}) {
            InNextWindow([&] {
                auto& box = static_cast<QMessageBox&>(*QApplication::activeModalWidget());
                EXPECT_EQ(box.icon(), row.icon) << row.style;
                EXPECT_EQ(static_cast<std::size_t>(box.buttons().size()), row.buttons) << row.style;
                EXPECT_EQ(box.text(), "<b>x</b>") << "plain text";
                EXPECT_EQ(box.textFormat(), Qt::PlainText);
                if (escape) Key(box, Qt::Key_Escape);
                if (escape && row.escape == 0) box.close();
                if (!escape || row.escape == 0) Key(box, Qt::Key_Return);
            });
            EXPECT_EQ(MessageBoxA(nullptr, "<b>x</b>", "Caption", row.style),
                      escape && row.escape != 0 ? row.escape : row.enter)
                << row.style << escape;
        }
    }
}

TEST_F(Screen, BoxOfAHandlerIsAChildOfTheDialog) {
    dialog.on_run = [&] {
        const CWaitCursor wait;
        EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
        InNextWindow([&] {
            QWidget* const box = QApplication::activeModalWidget();
            EXPECT_EQ(box->parentWidget(), screen.Find(dialog));
            EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "the user is to answer";
            Key(*box, Qt::Key_Return);
        });
        dialog.MessageBox("text", "caption");
        EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
    };
    Run([&](desktop::DialogView&) { Click(Widget(kRun)); });
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

// Posts input as the window system does during a run.
void PostClick(const QWidget& button) {
    const QPoint at = button.mapTo(button.window(), button.rect().center());
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
        QCoreApplication::postEvent(
            button.window()->windowHandle(),
            new QMouseEvent(type, at, button.mapToGlobal(button.rect().center()), Qt::LeftButton,
                            type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier));
}

TEST_F(Screen, RunReceivesEscapeAndNoOtherInput) {
    dialog.on_run = [&] {
        QWidget& view = *screen.Find(dialog);
        const auto shown = [&] { return view.screen()->grabWindow(view.winId()).toImage(); };
        const QImage before = shown();
        dialog.SetDlgItemText(kStatus, "Reading .0001");
        EXPECT_NE(shown(), before) << "painted at once";
        EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), 0);
        PostClick(Widget(IDCANCEL));
        QCoreApplication::postEvent(screen.Find(dialog), new QCloseEvent);
        EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), 0);
        PostEscape();
        EXPECT_NE(GetAsyncKeyState(VK_ESCAPE), 0) << "pressed since the last poll";
        EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), 0);
    };
    Run([&](desktop::DialogView&) {
        Click(Widget(kRun));
        EXPECT_EQ(Events(), "") << "Cancel did not work";
        Click(Widget(IDCANCEL));
        EXPECT_EQ(Events(), "cancel ") << "and works again";
    });

    // A run that disables its button can be interrupted by other buttons.
    dialog.on_run = [&] {
        dialog.GetDlgItem(kRun)->EnableWindow(FALSE);
        PostClick(Widget(IDCANCEL));
        EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), 0);
        EXPECT_EQ(Events(), "cancel ");
    };
    Run([&](desktop::DialogView&) { Click(Widget(kRun)); });
}

void CloseABoxByEscape() {
    InNextWindow([] { Key(*QApplication::activeModalWidget(), Qt::Key_Escape); });
    MessageBoxA(nullptr, "text", "caption", MB_OK);
}

TEST_F(Screen, EscapeSinceTheLastPollCountsOnceWhateverItClosed) {
    struct {
        const char* name;
        bool before_dialog, before_run, in_run;
    } const cases[] = {{"none", false, false, false},
                       {"closed_a_box_before_the_dialog", true, false, false},
                       {"pressed_in_the_dialog", false, true, false},
                       {"closed_a_box_of_the_run", false, false, true}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        WindowDialog batch;
        // A run of the batch dialog alone, and one inside a handler of another dialog.
        for (const bool nested : {false, true}) {
            batch.on_run = [&] {
                if (row.in_run) CloseABoxByEscape();
                EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE) != 0, row.before_dialog || row.before_run || row.in_run);
                EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), 0);
                batch.events += "run ";
            };
            const auto run_batch = [&] {
                if (row.before_dialog) CloseABoxByEscape();
                Run(batch, [&](desktop::DialogView& view) {
                    if (row.before_run) Key(view, Qt::Key_Escape);
                    Click(view.Find(batch.GetDlgItem(kRun)->m_hWnd)->Widget());
                });
            };
            dialog.on_run = run_batch;
            if (nested) {
                Run([&](desktop::DialogView&) { Click(Widget(kRun)); });
            } else {
                run_batch();
            }
            EXPECT_EQ(std::exchange(batch.events, ""), row.before_run ? "cancel run " : "run ") << nested;
        }
    }
}

TEST_F(Screen, FileDialogShowsFilesThatBeginWithADot) {
    const QTemporaryDir disk;
    const std::string native = disk.path().toStdString();
    std::ofstream(native + "/.0012") << "text of the file";
    CFileDialog files(TRUE, "*.*", nullptr, OFN_HIDEREADONLY | OFN_EXPLORER, "*.*||", nullptr);
    const std::string start = system::ModulePath(native);
    files.m_ofn.lpstrInitialDir = start.c_str();
    files.m_ofn.lpstrTitle = "Zelmara Font Directory";
    InNextWindow([&] {
        auto& shown = static_cast<QFileDialog&>(*QApplication::activeModalWidget());
        EXPECT_EQ(shown.windowTitle(), "Zelmara Font Directory");
        auto& list = *shown.findChild<QTreeView*>();
        const auto entry = [&](int row) { return list.model()->index(row, 0, list.rootIndex()); };
        EXPECT_TRUE(QTest::qWaitFor([&] { return entry(0).data() == ".0012" || entry(1).data() == ".0012"; }));
        list.setCurrentIndex(entry(entry(0).data() == ".0012" ? 0 : 1));
        Key(shown, Qt::Key_Return);
    });
    EXPECT_EQ(files.DoModal(), IDOK);
    EXPECT_EQ(files.GetPathName(), (start + "\\.0012").c_str());

    EXPECT_GT(WinExec(("Notepad " + start + "\\.0012").c_str(), 1), 31U);
    QWidget* const viewer = QApplication::activeModalWidget();
    ASSERT_NE(viewer, nullptr);
    EXPECT_EQ(viewer->findChild<QPlainTextEdit*>()->toPlainText(), "text of the file");
    viewer->close();
    EXPECT_LE(WinExec("Notepad D:\\none", 1), 31U);
}

}  // namespace

}  // namespace zel::screen_test
