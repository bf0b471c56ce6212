#include "programs/desktop/windows/pick.h"

#include <QFileDialog>

#include "programs/desktop/dialogs/file_view.h"

namespace zel::desktop {

namespace {

QStringList Run(QFileDialog& dialog, const QString& start) {
    constexpr int kColumns = 110;
    ShowDotFiles(dialog);
    if (!start.isEmpty()) dialog.setDirectory(start);
    FitFileColumns(dialog, kColumns);
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
