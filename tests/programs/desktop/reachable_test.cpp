// Every control has a name for screen readers, and every action can be chosen by keyboard.
#include <QAccessible>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTextBrowser>
#include <map>

#include <gmock/gmock.h>

#include "programs/desktop/host_window_fixture.h"
#include "programs/desktop/windows/glyph_sheet_window.h"
#include "programs/desktop/windows/remote_chooser.h"
#include "programs/desktop/windows/warnings_window.h"

namespace zel::screen_test {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

std::string ControlName(QWidget& widget) {
    const QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&widget);
    return accessible == nullptr ? std::string() : accessible->text(QAccessible::Name).trimmed().toStdString();
}

/// The controls of a window that take the focus and have no name.
std::vector<std::string> UnnamedIn(QWidget& window) {
    std::vector<std::string> unnamed;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        const auto* const tabs = qobject_cast<const QTabBar*>(widget);
        const bool own = widget->window() == &window && widget->focusProxy() == nullptr &&
                         !widget->objectName().startsWith(QLatin1String("qt_")) &&
                         (tabs == nullptr || tabs->count() != 0);
        if (!own || (widget->focusPolicy() & Qt::TabFocus) == 0 || !ControlName(*widget).empty()) continue;
        unnamed.push_back(std::string(widget->metaObject()->className()) + " " + widget->objectName().toStdString());
    }
    return unnamed;
}

/// A walk through a window's menus.
class MenuWalk {
  public:
    explicit MenuWalk(const QMenuBar& menus) { Visit(menus.actions(), "menus"); }

    /// Actions without a letter in their menu and without keys; letters and keys of two actions.
    std::vector<std::string> faults;
    int actions = 0;

  private:
    void Visit(const QList<QAction*>& entries, const std::string& menu) {
        std::map<QKeySequence, std::string> letters;
        for (const QAction* const action : entries) {
            if (action->isSeparator()) continue;
            const std::string text = menu + " " + action->text().toStdString();
            const QKeySequence letter = QKeySequence::mnemonic(action->text());
            if (letter.isEmpty() && action->shortcut().isEmpty()) faults.push_back(text + ": no key");
            if (!letter.isEmpty()) Add(letters, letter, text);
            for (const QKeySequence& keys : action->shortcuts()) {
                if (!keys.isEmpty()) Add(m_keys, keys, text);
            }
            ++actions;
            if (action->menu() != nullptr) Visit(action->menu()->actions(), text);
        }
    }
    void Add(std::map<QKeySequence, std::string>& keys, const QKeySequence& key, const std::string& text) {
        const auto [first, added] = keys.emplace(key, text);
        if (!added) faults.push_back(text + ": the key of " + first->second);
    }

    std::map<QKeySequence, std::string> m_keys;
};

TEST_F(HostWindow, EveryActionHasItsOwnKey) {
    const MenuWalk walk(*window->menuBar());
    EXPECT_THAT(walk.faults, IsEmpty());
    EXPECT_GT(walk.actions, 40);
    Trigger("keys");
    const std::string keys = Find<QTextBrowser>("help").toPlainText().toStdString();
    for (const char* const shown : {"Ctrl+Shift+S", "F11", "Save key as", "Esc in full screen"})
        EXPECT_THAT(keys, HasSubstr(shown));
}

TEST_F(HostWindow, EveryControlHasAName) {
    EXPECT_THAT(UnnamedIn(*window), IsEmpty());
    OpenRecordedLibrary();
    for (const char* const action : {"export", "batch_export", "fetch", "import_options", "about", "import"}) {
        InNextWindow([action] {
            QWidget* const dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr) << action;
            EXPECT_THAT(UnnamedIn(*dialog), IsEmpty()) << action;
            dialog->close();
        });
        Trigger(action);
    }
    InNextWindow([] {
        EXPECT_THAT(UnnamedIn(*QApplication::activeModalWidget()), IsEmpty()) << "server";
        QApplication::activeModalWidget()->close();
    });
    desktop::ChooseRemote({}, window.get());
    Trigger("guide");
    window->Open({Disk() + QStringLiteral("/MACHINE/.0012")});
    desktop::WarningsWindow warnings(window.get());
    warnings.Show({});
    Find<desktop::NoticeBar>("notice").Warn(QStringLiteral("notice"));
    int windows = 0;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (!widget->isVisible()) continue;
        EXPECT_THAT(UnnamedIn(*widget), IsEmpty()) << widget->objectName().toStdString();
        ++windows;
    }
    EXPECT_GE(windows, 4) << "main window, guide, glyphs, warnings";
}

}  // namespace

}  // namespace zel::screen_test
