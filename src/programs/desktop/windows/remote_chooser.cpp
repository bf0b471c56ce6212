#include "programs/desktop/windows/remote_chooser.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

namespace {

enum Entry { kDirectory = Qt::UserRole };

void Fill(QListWidget& list, const ftp::RemoteView& view) {
    QStyle& style = *QApplication::style();
    const auto add = [&](const std::string& name, bool directory) {
        auto* const item = new QListWidgetItem(style.standardIcon(directory ? QStyle::SP_DirIcon : QStyle::SP_FileIcon),
                                               ScreenText(name), &list);
        item->setData(kDirectory, directory);
    };
    add("..", true);
    for (const bool directory : {true, false}) {
        for (const ftp::ListingEntry& entry : view.listing.entries) {
            if ((entry.kind == ftp::EntryKind::kDirectory) == directory) add(entry.name, directory);
        }
    }
    list.setCurrentRow(list.count() > 1 ? 1 : 0);
}

}  // namespace

std::optional<ftp::RemoteChoice> ChooseRemote(const ftp::RemoteView& view, QWidget* parent) {
    using Kind = ftp::RemoteChoice::Kind;
    QDialog dialog(parent);
    dialog.setObjectName(QStringLiteral("remote"));
    dialog.setWindowTitle(QObject::tr("Server"));
    auto* const where =
        new QLabel(view.directory.empty() ? QObject::tr("Directory of the login") : ScreenText(view.directory));
    where->setTextFormat(Qt::PlainText);
    auto* const list = new QListWidget;
    list->setAccessibleName(QObject::tr("Files and directories"));
    Fill(*list, view);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton* const open = buttons->addButton(QObject::tr("&Open"), QDialogButtonBox::ActionRole);
    QPushButton* const here = buttons->addButton(QObject::tr("&Take this directory"), QDialogButtonBox::ActionRole);
    auto* const column = new QVBoxLayout(&dialog);
    column->addWidget(where);
    column->addWidget(list);
    column->addWidget(buttons);
    open->setDefault(true);  // by the dialog, in which it has to be for that

    std::optional<ftp::RemoteChoice> choice;
    const auto take = [&] {
        const QListWidgetItem* const item = list->currentItem();
        if (item == nullptr) return;
        const bool directory = item->data(kDirectory).toBool();
        choice = ftp::RemoteChoice{directory ? Kind::kOpen : Kind::kTake, ModuleText(item->text())};
        dialog.accept();
    };
    QObject::connect(list, &QListWidget::currentItemChanged, &dialog, [open](const QListWidgetItem* item) {
        open->setText(item != nullptr && !item->data(kDirectory).toBool() ? QObject::tr("&Take file")
                                                                          : QObject::tr("&Open"));
    });
    QObject::connect(list, &QListWidget::itemDoubleClicked, &dialog, take);
    QObject::connect(open, &QPushButton::clicked, &dialog, take);
    QObject::connect(here, &QPushButton::clicked, &dialog, [&] {
        choice = ftp::RemoteChoice{};
        dialog.accept();
    });
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    dialog.resize(420, 420);
    list->setFocus();
    dialog.exec();
    return choice;
}

}  // namespace zel::desktop
