#include "programs/desktop/windows/remote_chooser.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

namespace {

enum Role { kIsDirectory = Qt::UserRole };

void Fill(QListWidget& list, const ftp::RemoteView& view) {
    QStyle& style = *QApplication::style();
    const auto add = [&](const std::string& name, bool directory) {
        auto* const item = new QListWidgetItem(style.standardIcon(directory ? QStyle::SP_DirIcon : QStyle::SP_FileIcon),
                                               ScreenText(name), &list);
        item->setData(kIsDirectory, directory);
    };
    add("..", true);
    for (const bool directory : {true, false}) {
        for (const ftp::ListingEntry& entry : view.listing.entries) {
            if ((entry.kind == ftp::EntryKind::kDirectory) == directory) add(entry.name, directory);
        }
    }
    list.setCurrentRow(list.count() > 1 ? 1 : 0);
}

class RemoteDialog : public QDialog {
  public:
    RemoteDialog(const ftp::RemoteView& view, QWidget* parent);

    const std::optional<ftp::RemoteChoice>& Choice() const noexcept { return m_choice; }

  private:
    void Choose(ftp::RemoteChoice choice);
    void ChooseCurrent();

    QListWidget* m_list;
    std::optional<ftp::RemoteChoice> m_choice;
};

RemoteDialog::RemoteDialog(const ftp::RemoteView& view, QWidget* parent) : QDialog(parent), m_list(new QListWidget) {
    setObjectName(QStringLiteral("remote"));
    setWindowTitle(QObject::tr("Server"));
    auto* const place =
        new QLabel(view.directory.empty() ? QObject::tr("Login directory") : ScreenText(view.directory));
    place->setTextFormat(Qt::PlainText);
    m_list->setAccessibleName(QObject::tr("Files and directories"));
    Fill(*m_list, view);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton* const open = buttons->addButton(QObject::tr("&Open"), QDialogButtonBox::ActionRole);
    QPushButton* const here = buttons->addButton(QObject::tr("&Use this directory"), QDialogButtonBox::ActionRole);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(place);
    column->addWidget(m_list);
    column->addWidget(buttons);
    // Effective only when the button is in the dialog.
    open->setDefault(true);
    connect(m_list, &QListWidget::currentItemChanged, this, [open](const QListWidgetItem* item) {
        open->setText(item != nullptr && !item->data(kIsDirectory).toBool() ? QObject::tr("&Use file")
                                                                            : QObject::tr("&Open"));
    });
    connect(m_list, &QListWidget::itemDoubleClicked, this, &RemoteDialog::ChooseCurrent);
    connect(open, &QPushButton::clicked, this, &RemoteDialog::ChooseCurrent);
    connect(here, &QPushButton::clicked, this, [this] { Choose({}); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(420, 420);
    m_list->setFocus();
}

void RemoteDialog::Choose(ftp::RemoteChoice choice) {
    m_choice = std::move(choice);
    accept();
}

void RemoteDialog::ChooseCurrent() {
    using Kind = ftp::RemoteChoice::Kind;
    const QListWidgetItem* const item = m_list->currentItem();
    if (item == nullptr) return;
    Choose({item->data(kIsDirectory).toBool() ? Kind::kOpen : Kind::kTake, ModuleText(item->text())});
}

}  // namespace

std::optional<ftp::RemoteChoice> ChooseRemote(const ftp::RemoteView& view, QWidget* parent) {
    RemoteDialog dialog(view, parent);
    dialog.exec();
    return dialog.Choice();
}

}  // namespace zel::desktop
