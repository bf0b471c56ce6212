#include "programs/desktop/windows/warnings_window.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include "programs/desktop/common/text.h"
#include "programs/desktop/models/message_details.h"
#include "programs/desktop/widgets/detail_table.h"

namespace zel::desktop {

WarningsWindow::WarningsWindow(QWidget* parent)
    : QDialog(parent), m_table(new DetailTable({tr("Message"), tr("Warning")}, tr("No warnings"), this)) {
    setObjectName(QStringLiteral("warnings_window"));
    setWindowTitle(tr("Warnings of the last import"));
    m_table->setObjectName(QStringLiteral("warnings"));
    m_table->setAccessibleName(tr("Warnings"));
    auto* const label = new QLabel(tr("&Warnings (Enter shows the message):"), this);
    label->setBuddy(m_table);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(label);
    column->addWidget(m_table);
    column->addWidget(buttons);
    resize(720, 360);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_table, &QTableView::activated, this, [this](const QModelIndex& index) {
        const auto at = static_cast<std::size_t>(index.row());
        if (at < m_keys.size()) Q_EMIT chosen(m_keys[at]);
    });
}

void WarningsWindow::Show(const std::vector<MessageWarnings>& warnings) {
    m_table->Clear();
    m_keys.clear();
    for (const MessageWarnings& message : warnings) {
        for (const std::string& warning : message.warnings) {
            m_table->AddRow({TitleOf(message.key), Text(warning)});
            m_keys.push_back(message.key);
        }
    }
    m_table->FitColumns();
    m_table->setFocus();
    show();
    raise();
    activateWindow();
}

}  // namespace zel::desktop
