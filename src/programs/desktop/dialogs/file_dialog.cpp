#include "programs/desktop/dialogs/file_dialog.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFontMetrics>
#include <QHeaderView>
#include <QTreeView>

#include "platform/framework/cfiledialog.h"
#include "platform/system/files.h"
#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

namespace {

QString TextOf(const char* text) {
    return ScreenText(text != nullptr ? text : "");
}

/// Pairs of a name and patterns, "Fonts|*.fnt;*.gly|All|*.*||". On the home system *.* means every file, dot or none.
QStringList NameFilters(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i < parts.size() && !parts[i].isEmpty(); i += 2) {
        QString patterns = i + 1 < parts.size() ? parts[i + 1] : QString();
        if (patterns.isEmpty()) patterns = QStringLiteral("*.*");
        const QString name =
            parts[i] == QStringLiteral("*.*") ? QStringLiteral("All files") : parts[i].section(u'(', 0, 0).trimmed();
        filters.append(name + QStringLiteral(" (") +
                       patterns.replace(u';', u' ').replace(QStringLiteral("*.*"), QStringLiteral("*")) + u')');
    }
    return filters;
}

/// Sizes, kinds and dates whole, and the rest for the names.
void MakeRoom(QFileDialog& files) {
    constexpr int kColumns = 120, kLines = 28;
    const QFontMetrics metrics = files.fontMetrics();
    files.resize(metrics.averageCharWidth() * kColumns, metrics.lineSpacing() * kLines);
    auto* const list = files.findChild<QTreeView*>();
    if (list == nullptr) return;
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

}  // namespace

int PickFile(QWidget* parent, const CFileDialog& dialog, std::string& path) {
    const auto& told = dialog.m_ofn;
    QFileDialog files(parent, TextOf(told.lpstrTitle));
    // The system's own dialogs hide names that begin with a dot.
    files.setOption(QFileDialog::DontUseNativeDialog);
    files.setFilter(QDir::AllDirs | QDir::Files | QDir::Hidden | QDir::NoDot);
    files.setAcceptMode(dialog.m_bOpenFileDialog != FALSE ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    files.setFileMode(QFileDialog::AnyFile);  // a name that isn't there is the caller's affair
    if ((told.Flags & OFN_OVERWRITEPROMPT) == 0) files.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList filters = NameFilters(TextOf(told.lpstrFilter));
    if (!filters.isEmpty()) files.setNameFilters(filters);
    if (told.lpstrInitialDir != nullptr && *told.lpstrInitialDir != '\0')
        files.setDirectory(QFile::decodeName(system::NativePath(told.lpstrInitialDir).c_str()));
    if (told.lpstrFile != nullptr && *told.lpstrFile != '\0') files.selectFile(TextOf(told.lpstrFile));
    MakeRoom(files);
    if (files.exec() != QDialog::Accepted || files.selectedFiles().isEmpty()) return IDCANCEL;
    path = QFile::encodeName(files.selectedFiles().front()).toStdString();
    return IDOK;
}

}  // namespace zel::desktop
