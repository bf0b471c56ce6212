#include "programs/desktop/widgets/start_page.h"

#include <QAction>
#include <QCommandLinkButton>
#include <QLabel>
#include <QVBoxLayout>

namespace zel::desktop {

namespace {

constexpr int kWidth = 440;

}  // namespace

StartPage::StartPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("start_page"));
}

void StartPage::Offer(const QList<Way>& ways) {
    auto* const around = new QHBoxLayout(this);
    auto* const column = new QVBoxLayout;
    around->addStretch();
    around->addLayout(column);
    around->addStretch();
    column->addStretch();
    auto* const head = new QLabel(tr("Import your first messages"));
    QFont large = head->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    head->setFont(large);
    column->addWidget(head);
    auto* const words = new QLabel(tr("Drop a disk, a folder or a message file anywhere on this window."));
    words->setWordWrap(true);
    words->setMaximumWidth(kWidth);
    column->addWidget(words);
    column->addSpacing(12);
    for (const Way& way : ways) {
        const QString keys = way.action->shortcut().toString(QKeySequence::NativeText);
        auto* const button = new QCommandLinkButton(
            way.action->text(), keys.isEmpty() ? way.purpose : way.purpose + QStringLiteral("  (") + keys + u')');
        button->setMinimumWidth(kWidth);
        button->setAutoDefault(true);  // Enter presses it
        button->setEnabled(way.action->isEnabled());
        connect(button, &QAbstractButton::clicked, way.action, &QAction::trigger);
        connect(way.action, &QAction::changed, button,
                [button, action = way.action] { button->setEnabled(action->isEnabled()); });
        column->addWidget(button);
        if (focusProxy() == nullptr) setFocusProxy(button);
    }
    column->addStretch();
}

}  // namespace zel::desktop
