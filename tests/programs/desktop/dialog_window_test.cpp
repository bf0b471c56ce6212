// A dialog's window: layout, keyboard, and the state of its controls in both directions.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <gmock/gmock.h>

#include "module/contract/zel_trans_dlg.h"
#include "module/state/module_state.h"
#include "programs/desktop/dialogs/dialog_units.h"
#include "programs/desktop/test_window.h"

namespace zel::screen_test {

BEGIN_MESSAGE_MAP(WindowDialog, CDialog)
ON_BN_CLICKED(kRun, &WindowDialog::OnRun)
ON_EN_CHANGE(kEdit, &WindowDialog::OnChange)
ON_WM_CLOSE()
END_MESSAGE_MAP()

namespace {

using DialogWindow = OnScreen;

/// The widget's text if the widget is too small for it; else empty.
std::string CutText(const QWidget& widget) {
    if (const auto* const label = qobject_cast<const QLabel*>(&widget)) return label->toolTip().toStdString();
    const auto* const button = qobject_cast<const QPushButton*>(&widget);
    if (button == nullptr) return {};
    const QFontMetricsF font(button->font());
    const bool multi_line = button->height() > 2 * font.height();
    const QStringList lines = desktop::BrokenLines(button->text(), button->width() - 4, font);
    return lines.size() > (multi_line ? 2 : 1) ? button->text().toStdString() : std::string();
}

TEST_F(DialogWindow, ShowsAllTextsOfTheModuleInAnyFont) {
    AfxGetModuleState()->m_hCurrentResourceHandle = g_hZelResource;
    const QFont before = QApplication::font();
    for (const char* family : {"DejaVu Sans", "DejaVu Serif", "DejaVu Sans Mono", "DejaVu Sans Condensed"}) {
        for (const int points : {6, 9, 13, 22}) {
            QApplication::setFont(QFont(QString::fromLatin1(family), points));
            for (const framework::DialogTemplate& source : g_hZelResource->dialogs) {
                CDialog shown(source.id);
                Run(shown, [&](desktop::DialogView& view) {
                    for (const auto& control : view.Controls()) {
                        const QWidget& widget = control->Widget();
                        EXPECT_EQ(widget.isVisible() ? CutText(widget) : "", "") << family << points;
                        EXPECT_TRUE(!widget.isVisible() || view.rect().contains(widget.geometry())) << source.id;
                    }
                });
            }
        }
    }
    QApplication::setFont(before);
}

TEST_F(DialogWindow, TabAndAccessKeysFocusFieldsAndPressButtons) {
    Run([&](desktop::DialogView& view) {
        std::vector<std::string> visited{Focused()};
        for (int i = 0; i < 9; ++i) {
            Key(view, Qt::Key_Tab);
            visited.push_back(Focused());
        }
        EXPECT_THAT(visited, testing::ElementsAre("10", "11", "12", "13", "14", "15", "18", "1", "2", "10"));
        Key(view, Qt::Key_C, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.GetDlgItem(kCheck)->SendMessage(BM_GETCHECK) == 1; }));
        Key(view, Qt::Key_N, Qt::AltModifier);
        EXPECT_EQ(Focused(), "10");
        EXPECT_EQ(CWnd::GetFocus()->m_hWnd, dialog.GetDlgItem(kEdit)->m_hWnd);
        Key(view, Qt::Key_R, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Events() == "run "; }));
    });
}

TEST_F(DialogWindow, HandlesEnterEscapeAndTheTitleBar) {
    Run([&](desktop::DialogView& view) {
        for (const int field : {kEdit, kCombo, kList, kCheck}) {
            Widget(field).setFocus();
            Key(view, Qt::Key_Return);
            EXPECT_EQ(Events(), "ok ") << field;
            Key(view, Qt::Key_Escape);
            EXPECT_EQ(Events(), "cancel ") << field;
        }
        Widget(kRun).setFocus();
        Key(view, Qt::Key_Enter);
        EXPECT_EQ(Events(), "run ") << "the focused button";
        Widget(kEdit).setFocus();
        dialog.SendMessage(DM_SETDEFID, kRun);
        EXPECT_TRUE(Widget<QPushButton>(kRun).isDefault());
        EXPECT_FALSE(Widget<QPushButton>(IDOK).isDefault());
        Key(view, Qt::Key_Return);
        EXPECT_EQ(Events(), "run ");
        dialog.GetDlgItem(kRun)->EnableWindow(FALSE);
        Widget(kEdit).setFocus();
        Key(view, Qt::Key_Return);
        EXPECT_EQ(Events(), "") << "a disabled default button";
        view.close();
        EXPECT_EQ(Events(), "close cancel ");
        EXPECT_TRUE(view.isVisible()) << "the dialog has not ended";
    });
}

TEST_F(DialogWindow, ShowsChangesOfItsControlsAndPassesActionsToThem) {
    Run([&](desktop::DialogView& view) {
        CWnd& combo = *dialog.GetDlgItem(kCombo);
        for (const char* entry : {"one", "two"}) {
            combo.SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry));
            dialog.GetDlgItem(kList)->SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry));
        }
        combo.SendMessage(CB_SETCURSEL, 0);
        Widget<QComboBox>(kCombo).setFocus();
        TypeText(view, QStringLiteral("x"));
        EXPECT_EQ(Text(kCombo), "onex");
        EXPECT_EQ(combo.SendMessage(CB_GETCURSEL), CB_ERR);
        Key(view, Qt::Key_Down);
        EXPECT_NE(combo.SendMessage(CB_GETCURSEL), CB_ERR);
        combo.SendMessage(CB_SETCURSEL, 1);
        combo.SendMessage(CB_DELETESTRING, 1);
        EXPECT_EQ(Widget<QComboBox>(kCombo).currentText(), "two") << "the field keeps its text";
        dialog.GetDlgItem(kList)->SendMessage(LB_SETCURSEL, 1);
        EXPECT_EQ(Widget<QListWidget>(kList).currentRow(), 1);
        Widget(kList).setFocus();
        Key(view, Qt::Key_Home);
        EXPECT_EQ(dialog.GetDlgItem(kList)->SendMessage(LB_GETCURSEL), 0);
        Click(Widget(kRadioB));
        Key(view, Qt::Key_Left);
        EXPECT_EQ(dialog.GetDlgItem(kRadioA)->SendMessage(BM_GETCHECK), 1) << "arrow keys move within the group";
        dialog.GetDlgItem(kRadioB)->SendMessage(BM_CLICK);
        dialog.GetDlgItem(kRadioB)->SendMessage(BM_SETCHECK, BST_UNCHECKED);
        dialog.SetDlgItemText(kEdit, "G\xC3\xA4nse");
        dialog.GetDlgItem(kEdit)->SendMessage(EM_SETSEL, 3, 5);
        EXPECT_EQ(Widget<QLineEdit>(kEdit).selectedText(), "ns") << "positions are bytes";
        dialog.SetWindowText("Other");
        EXPECT_EQ(view.windowTitle(), "Other");
        EXPECT_EQ(Widget<QLineEdit>(kPassword).echoMode(), QLineEdit::Password);
        CompareWithControls(view);
    });
}

TEST_F(DialogWindow, KeepsASelectionWithoutFocusWhereTheTemplateAsksForIt) {
    Run([&](desktop::DialogView&) {
        for (const int id : {kEdit, kPassword}) {
            auto& edit = Widget<QLineEdit>(id);
            dialog.SetDlgItemText(id, "0012");
            // By the module, forwards and backwards by the user.
            for (const auto& [first, length] : {std::pair(0, 4), {1, 2}, {3, -2}}) {
                edit.setFocus();
                if (length == 4) {
                    dialog.GetDlgItem(id)->SendMessage(EM_SETSEL, 0, -1);
                } else {
                    edit.setSelection(first, length);
                }
                const int cursor = edit.cursorPosition();
                const QString selected = edit.selectedText();
                Widget(kRun).setFocus(Qt::TabFocusReason);
                EXPECT_EQ(edit.selectedText(), id == kEdit ? selected : QString()) << first;
                if (id != kEdit) continue;
                EXPECT_EQ(edit.cursorPosition(), cursor);
                const QImage marked = edit.grab().toImage();
                edit.deselect();
                EXPECT_NE(edit.grab().toImage(), marked) << "the selection is visible";
            }
        }
    });
}

TEST_F(DialogWindow, ShowsInvalidUtf8AsLatin1) {
    Run([&](desktop::DialogView& view) {
        dialog.SetDlgItemText(kStatus, "Caf\xE9 & Co");
        EXPECT_EQ(Widget<QLabel>(kStatus).text(), QString::fromUtf8("Caf\xC3\xA9 & Co"));
        dialog.GetDlgItem(kEdit)->SendMessage(EM_LIMITTEXT, 6);
        Events();
        TypeText(view, QString::fromUtf8("\xC3\x9C\xE2\x82\xAC\x61\xC3\xA9"));
        EXPECT_EQ(Text(kEdit), "\xC3\x9C\xE2\x82\xAC\x61") << "cut before the character that exceeds the limit";
        EXPECT_EQ(Widget<QLineEdit>(kEdit).text().size(), 3);
    });
}

TEST_F(DialogWindow, FollowsAndReportsItsPosition) {
    Run([&](desktop::DialogView& view) {
        const auto position = [&] {
            RECT rect{};
            dialog.GetWindowRect(&rect);
            return QPoint(rect.left, rect.top);
        };
        EXPECT_EQ(position(), view.pos());
        dialog.MoveWindow(70, 80, 1, 1);
        EXPECT_EQ(view.pos(), QPoint(70, 80));
        // The window system reports a move by the user in the same way.
        view.move(33, 44);
        EXPECT_EQ(position(), QPoint(33, 44));
        dialog.MoveWindow(1999, 1999, 1, 1);
        EXPECT_TRUE(view.screen()->availableGeometry().contains(view.frameGeometry()));
        EXPECT_EQ(position(), QPoint(1999, 1999)) << "kept as requested until the user moves it";
    });
}

TEST_F(DialogWindow, RethrowsTheExceptionOfAHandler) {
    dialog.on_run = [] { throw 7; };
    EXPECT_THROW(Run([&](desktop::DialogView&) { Click(Widget(kRun)); }), int);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    dialog.on_run = [&] { dialog.DestroyWindow(); };
    Run([&](desktop::DialogView&) { Click(Widget(kRun)); });
}

}  // namespace

}  // namespace zel::screen_test
