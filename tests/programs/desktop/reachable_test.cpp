// Every action can be chosen by keyboard.
#include <QMenu>
#include <QMenuBar>
#include <QTextBrowser>
#include <map>

#include <gmock/gmock.h>

#include "programs/desktop/host_window_fixture.h"

namespace zel::screen_test {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

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

}  // namespace

}  // namespace zel::screen_test
