#include "programs/desktop/widgets/start_page.h"

#include <QAction>
#include <QCommandLinkButton>
#include <QLabel>
#include <QVBoxLayout>

namespace zel::desktop {

namespace {

/// The least and the most that a button needs.
constexpr int kLeastButtonWidth = 240, kWidth = 440;

}  // namespace

StartPage::StartPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("start_page"));
}

void StartPage::AddChoices(const QList<Choice>& choices) {
    auto* const row = new QHBoxLayout(this);
    auto* const page = new QWidget(this);
    page->setMaximumWidth(kWidth);
    auto* const column = new QVBoxLayout(page);
    // The page gets its width first.
    constexpr int kFirst = 1000;
    row->addStretch(1);
    row->addWidget(page, kFirst);
    row->addStretch(1);
    column->addStretch();
    auto* const title = new QLabel(tr("Import your first messages"));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    title->setFont(large);
    title->setWordWrap(true);
    column->addWidget(title);
    auto* const hint = new QLabel(tr("Drop a disk, a folder or a message file anywhere on this window."));
    hint->setWordWrap(true);
    column->addWidget(hint);
    column->addSpacing(12);
    for (const Choice& choice : choices) {
        const QString keys = choice.action->shortcut().toString(QKeySequence::NativeText);
        auto* const button = new QCommandLinkButton(
            choice.action->text(),
            keys.isEmpty() ? choice.description : choice.description + QStringLiteral("  (") + keys + u')');
        button->setMinimumWidth(kLeastButtonWidth);
        // Enter presses it.
        button->setAutoDefault(true);
        button->setEnabled(choice.action->isEnabled());
        connect(button, &QAbstractButton::clicked, choice.action, &QAction::trigger);
        connect(choice.action, &QAction::changed, button,
                [button, action = choice.action] { button->setEnabled(action->isEnabled()); });
        column->addWidget(button);
        if (focusProxy() == nullptr) setFocusProxy(button);
    }
    column->addStretch();
}

}  // namespace zel::desktop
