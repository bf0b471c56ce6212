#include "programs/desktop/dialogs/file_dialog.h"

#include <QFile>
#include <QFileDialog>

#include "platform/framework/cfiledialog.h"
#include "platform/system/files.h"
#include "programs/desktop/dialogs/file_view.h"
#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

namespace {

QString TextOf(const char* text) {
    return ScreenText(text != nullptr ? text : "");
}

/// Converts pairs of a name and patterns, "Fonts|*.fnt;*.gly|All|*.*||". The pattern *.* matches every file, with or
/// without a dot in its name.
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

}  // namespace

int PickFile(QWidget* parent, const CFileDialog& dialog, std::string& path) {
    const auto& options = dialog.m_ofn;
    QFileDialog files(parent, TextOf(options.lpstrTitle));
    ShowDotFiles(files);
    files.setAcceptMode(dialog.m_bOpenFileDialog != FALSE ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    // The caller handles a missing file.
    files.setFileMode(QFileDialog::AnyFile);
    if ((options.Flags & OFN_OVERWRITEPROMPT) == 0) files.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList filters = NameFilters(TextOf(options.lpstrFilter));
    if (!filters.isEmpty()) files.setNameFilters(filters);
    if (options.lpstrInitialDir != nullptr && *options.lpstrInitialDir != '\0')
        files.setDirectory(QFile::decodeName(system::NativePath(options.lpstrInitialDir).c_str()));
    if (options.lpstrFile != nullptr && *options.lpstrFile != '\0') files.selectFile(TextOf(options.lpstrFile));
    constexpr int kColumns = 120;
    FitFileColumns(files, kColumns);
    if (files.exec() != QDialog::Accepted || files.selectedFiles().isEmpty()) return IDCANCEL;
    path = QFile::encodeName(files.selectedFiles().front()).toStdString();
    return IDOK;
}

}  // namespace zel::desktop
