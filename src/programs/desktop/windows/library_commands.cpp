#include "programs/desktop/windows/library_commands.h"

#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QSettings>

#include "host/library/library.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/windows/pick.h"

namespace zel::desktop {

namespace {

constexpr qsizetype kMaxLibraries = 10;
const QString kRecentSetting = QStringLiteral("recent/libraries");

QString LibraryNames() {
    return LibraryCommands::tr("Libraries") + QStringLiteral(" (*.zellib)");
}

}  // namespace

QString LibraryCommands::Folder() const {
    return QFileInfo(QFile::decodeName(m_workspace.places.library.c_str())).absolutePath();
}

void LibraryCommands::Open() {
    const QStringList files = PickFiles(&m_workspace.window, tr("Open library"), Folder(), false,
                                        {LibraryNames(), tr("All files") + QStringLiteral(" (*)")});
    if (!files.isEmpty()) OpenFile(files.front());
}

void LibraryCommands::New() {
    const QString file = PickNewFile(&m_workspace.window, tr("New library"), Folder() + u'/' + tr("messages.zellib"),
                                     {QStringLiteral("zellib"), LibraryNames(), false});
    if (file.isEmpty()) return;
    m_workspace.BeginAction();
    if (QFileInfo::exists(file)) {
        return m_workspace.notice.Warn(tr("%1 exists.").arg(file),
                                       tr("Choose another name, or use Open library… in the menu File."));
    }
    try {
        library::Library(QFile::encodeName(file).toStdString(), library::Access::kWrite, kLibraryWait);
        Q_EMIT opened(file);
    } catch (const library::LibraryError& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Choose another folder or free disk space, then try again."));
    }
}

void LibraryCommands::OpenFile(const QString& file) {
    m_workspace.BeginAction();
    try {
        library::Library(QFile::encodeName(file).toStdString(), library::Access::kRead, kLibraryWait);
        Q_EMIT opened(file);
    } catch (const library::LibraryError& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("The library that was open is still open."));
    }
}

QStringList LibraryCommands::Recent() const {
    QStringList files;
    for (const QString& file : m_workspace.settings.value(kRecentSetting).toStringList()) {
        if (QFileInfo::exists(file)) files.append(file);
    }
    return files;
}

void LibraryCommands::AddRecent(const QString& file) {
    QStringList files = m_workspace.settings.value(kRecentSetting).toStringList();
    files.removeAll(file);
    files.prepend(file);
    m_workspace.settings.setValue(kRecentSetting, files.mid(0, kMaxLibraries));
}

}  // namespace zel::desktop
