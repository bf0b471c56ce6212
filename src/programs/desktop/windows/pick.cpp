#include "programs/desktop/windows/pick.h"

#include <QFileDialog>

#include "programs/desktop/dialogs/file_view.h"

namespace zel::desktop {

namespace {

QStringList Run(QFileDialog& dialog, const QString& start) {
    constexpr int kDialogColumns = 110;
    ShowDotFiles(dialog);
    if (!start.isEmpty()) dialog.setDirectory(start);
    FitFileColumns(dialog, kDialogColumns);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
}

}  // namespace

QStringList PickFiles(QWidget* parent, const QString& title, const QString& start, bool many,
                      const QStringList& filters) {
    QFileDialog dialog(parent, title);
    dialog.setFileMode(many ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    return Run(dialog, start);
}

QString PickFolder(QWidget* parent, const QString& title, const QString& start) {
    QFileDialog dialog(parent, title);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    const QStringList picked = Run(dialog, start);
    return picked.isEmpty() ? QString() : picked.front();
}

QString PickNewFile(QWidget* parent, const QString& title, const QString& start, const NewFileKind& kind) {
    QFileDialog dialog(parent, title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(kind.suffix);
    dialog.setNameFilter(kind.filter);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !kind.asks_to_replace);
    dialog.selectFile(start);
    const QStringList picked = Run(dialog, QString());
    return picked.isEmpty() ? QString() : picked.front();
}

QString PickNewPicture(QWidget* parent, const QString& title, const QString& start) {
    return PickNewFile(parent, title, start,
                       {QStringLiteral("png"), QFileDialog::tr("PNG pictures") + QStringLiteral(" (*.png)")});
}

}  // namespace zel::desktop
