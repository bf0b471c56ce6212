#include "programs/desktop/windows/pick.h"

#include <QDir>
#include <QFileDialog>
#include <QFontMetrics>
#include <QHeaderView>
#include <QTreeView>

namespace zel::desktop {

namespace {

/// The names whole: the rest of the columns takes what it needs.
void MakeRoom(QFileDialog& dialog) {
    constexpr int kColumns = 110, kLines = 28;
    const QFontMetrics metrics = dialog.fontMetrics();
    dialog.resize(metrics.averageCharWidth() * kColumns, metrics.lineSpacing() * kLines);
    if (auto* const list = dialog.findChild<QTreeView*>()) {
        list->header()->setStretchLastSection(false);
        list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
}

QStringList Run(QFileDialog& dialog, const QString& start) {
    // The system's own dialogs hide names that begin with a dot.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFilter(QDir::AllDirs | QDir::Files | QDir::Hidden | QDir::NoDot);
    if (!start.isEmpty()) dialog.setDirectory(start);
    MakeRoom(dialog);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
}

}  // namespace

QStringList PickFiles(QWidget* parent, const QString& title, const QString& start, bool many) {
    QFileDialog dialog(parent, title);
    dialog.setFileMode(many ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    return Run(dialog, start);
}

QString PickFolder(QWidget* parent, const QString& title, const QString& start) {
    QFileDialog dialog(parent, title);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    const QStringList picked = Run(dialog, start);
    return picked.isEmpty() ? QString() : picked.front();
}

QString PickNewFile(QWidget* parent, const QString& title, const QString& start, const QString& suffix) {
    QFileDialog dialog(parent, title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(start);
    const QStringList picked = Run(dialog, QString());
    return picked.isEmpty() ? QString() : picked.front();
}

}  // namespace zel::desktop
