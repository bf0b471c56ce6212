#include "programs/desktop/windows/font_commands.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QSettings>

#include "programs/desktop/common/text.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/windows/glyph_sheet_window.h"
#include "programs/desktop/windows/pick.h"
#include "programs/desktop/windows/recent_disks.h"
#include "programs/desktop/work/font_sheet.h"

namespace zel::desktop {

FontCommands::FontCommands(const Workspace& workspace, const RecentDisks& recent)
    : m_workspace(workspace), m_recent(recent) {}

void FontCommands::Show(const QString& file) {
    // To open a pipe would wait for its other end.
    const QFileInfo info(file);
    if (info.exists() && !info.isFile()) return m_workspace.notice.Warn(tr("%1 is not a regular file.").arg(file), {});
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const FontSheet sheet = MakeFontSheet(QFile::encodeName(file).toStdString());
    QApplication::restoreOverrideCursor();
    if (!sheet.failure.empty()) {
        return m_workspace.notice.Warn(
            Text(sheet.failure),
            tr("Fonts are in the folder MACHINE of a disk. Their names are a dot and a number, such as .0012."));
    }
    (new GlyphSheetWindow(sheet, &m_workspace.window))->show();
}

void FontCommands::MakeFont() {
    const QString setting = QStringLiteral("font/directory");
    const QStringList files = PickFiles(&m_workspace.window, tr("Make font"),
                                        m_recent.StartFolder(setting, QStringLiteral("MACHINE")), false);
    if (files.isEmpty()) return;
    m_workspace.settings.setValue(setting, QFileInfo(files.front()).absolutePath());
    Show(files.front());
}

}  // namespace zel::desktop
