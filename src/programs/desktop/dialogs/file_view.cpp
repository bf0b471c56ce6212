#include "programs/desktop/dialogs/file_view.h"

#include <QDir>
#include <QFileDialog>
#include <QFontMetrics>
#include <QHeaderView>
#include <QTreeView>

namespace zel::desktop {

void ShowDotFiles(QFileDialog& dialog) {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFilter(QDir::AllDirs | QDir::Files | QDir::Hidden | QDir::NoDot);
}

void FitFileColumns(QFileDialog& dialog, int columns) {
    constexpr int kRows = 28;
    const QFontMetrics metrics = dialog.fontMetrics();
    dialog.resize(metrics.averageCharWidth() * columns, metrics.lineSpacing() * kRows);
    auto* const list = dialog.findChild<QTreeView*>();
    if (list == nullptr) return;
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

}  // namespace zel::desktop
