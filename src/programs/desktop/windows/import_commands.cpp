#include "programs/desktop/windows/import_commands.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QSettings>
#include <algorithm>
#include <utility>

#include "host/ftp/ftp_fetch_service.h"
#include "host/library/library.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/status_line.h"
#include "programs/desktop/windows/box.h"
#include "programs/desktop/windows/font_commands.h"
#include "programs/desktop/windows/import_options_dialog.h"
#include "programs/desktop/windows/library_panel.h"
#include "programs/desktop/windows/pick.h"
#include "programs/desktop/windows/recent_disks.h"
#include "programs/desktop/windows/remote_chooser.h"
#include "programs/desktop/windows/warnings_window.h"
#include "programs/desktop/work/dialog_import.h"
#include "programs/desktop/work/module_desktop.h"

namespace zel::desktop {

ImportCommands::ImportCommands(const Workspace& workspace, ModuleDesktop& desktop, RecentDisks& recent,
                               FontCommands& fonts)
    : m_workspace(workspace), m_desktop(desktop), m_recent(recent), m_fonts(fonts) {
    connect(&m_import, &DiskImport::recorded, &workspace.library, &LibraryPanel::ReloadSoon);
    connect(&m_import, &DiskImport::progressed, this, [this](int done, int total, const QString& name) {
        m_workspace.status.ShowTask(tr("Importing %1").arg(name.section(u'/', -1)), done, total);
    });
    connect(&m_import, &DiskImport::finished, this, &ImportCommands::Ended);
}

void ImportCommands::Open(const QStringList& paths) {
    for (const QString& path : paths) OpenOne(QFileInfo(path).absoluteFilePath());
}

void ImportCommands::OpenOne(const QString& path) {
    const QFileInfo info(path);
    NoticeBar& notice = m_workspace.notice;
    if (!info.exists()) return notice.Warn(tr("%1: there is no such file or folder.").arg(path));
    if (!info.isReadable()) return notice.Warn(tr("%1 cannot be read.").arg(path), tr("Check its permissions."));
    const std::string native = QFile::encodeName(QDir::cleanPath(path)).toStdString();
    if (info.isFile() && KindOf(native) == FileKind::kFont) return m_fonts.Show(path);
    try {
        library::Library library(m_workspace.places.library, library::Access::kWrite, kLibraryWait);
        StartImport(path, FindMessages(native, library, m_names));
    } catch (const library::LibraryError& error) {
        notice.Warn(Text(error.what()), tr("Nothing was imported. Close the program that is using the library, or "
                                           "check the file, then try again."));
    } catch (const std::exception& error) {
        notice.Warn(Text(error.what()));
    }
}

void ImportCommands::StartImport(const QString& path, const MessageSource& source) {
    if (source.messages.empty()) return WarnOfNoMessages(path);
    m_import.Add(m_workspace.places.library, source,
                 m_workspace.OptionsFor({QFile::decodeName(source.directory.c_str())}));
    if (QFileInfo(path).isDir()) m_recent.Add(path);
}

void ImportCommands::WarnOfNoMessages(const QString& path) {
    if (QFileInfo(path).isDir()) {
        m_workspace.notice.Warn(tr("%1 contains no messages.").arg(path),
                                tr("A disk is a folder that contains MESSAGES and MACHINE. Any other folder with "
                                   "message files can be imported too."));
    } else {
        m_workspace.notice.Warn(tr("%1 is neither a message nor a font.").arg(path),
                                tr("Messages are in the folder MESSAGES of a disk, fonts in MACHINE. Their names are "
                                   "a dot and a number, such as .0012."));
    }
}

void ImportCommands::ImportFiles() {
    const QString setting = QStringLiteral("import/directory");
    const QStringList files = PickFiles(&m_workspace.window, tr("Import message files"),
                                        m_recent.StartFolder(setting, QStringLiteral("MESSAGES")), true);
    if (files.isEmpty()) return;
    m_workspace.settings.setValue(setting, QFileInfo(files.front()).absolutePath());
    m_workspace.BeginAction();
    Open(files);
}

void ImportCommands::ImportFolder() {
    const QString setting = QStringLiteral("import/disk");
    const QString folder = PickFolder(&m_workspace.window, tr("Import a disk or folder"),
                                      m_recent.StartFolder(setting, QStringLiteral("..")));
    if (folder.isEmpty()) return;
    m_workspace.settings.setValue(setting, QFileInfo(folder).absolutePath());
    m_workspace.BeginAction();
    Open({folder});
}

void ImportCommands::Ended(const ImportSummary& summary) {
    m_workspace.library.Reload();
    m_workspace.status.EndTask(summary.Text());
    SetWarnings(summary.warnings);
    if (!summary.stopped_by.isEmpty()) {
        m_workspace.notice.Warn(summary.stopped_by,
                                tr("%1. Recorded messages are kept. When the library can be written again, repeat the "
                                   "import; unchanged messages are skipped.")
                                    .arg(summary.Text()));
    } else if (!summary.failures.isEmpty()) {
        m_workspace.notice.Warn(FirstLines(summary.failures));
    }
}

void ImportCommands::ImportByModule() {
    const auto later = [this](const std::function<void()>& call) {
        QMetaObject::invokeMethod(this, call, Qt::QueuedConnection);
    };
    DialogImportCallbacks callbacks;
    callbacks.recorded = [this, later](const library::RecordingKey& key) {
        later([this, key] { m_workspace.library.SelectSoon(key); });
    };
    callbacks.failed = [later](const std::string& reason) {
        later([text = Text(reason)] {
            RunBox(QApplication::activeWindow(), QMessageBox::Warning, tr("ZelTrans"),
                   tr("%1\n\nMessages imported from now on are not recorded. Close the import dialog, "
                      "free disk space or close the program that is using the library, then import "
                      "again.")
                       .arg(text));
        });
    };
    ftp::FetchServiceOptions service_options;
    service_options.chooser = [](const ftp::RemoteView& view) {
        return ChooseRemote(view, QApplication::activeModalWidget());
    };
    ftp::FetchService service(std::move(service_options));
    m_workspace.BeginAction();
    FillModulesDialog();
    m_import.SetPaused(true);
    try {
        const DialogImportOutcome outcome = ImportByDialog(
            m_workspace.places.library, m_desktop, m_workspace.OptionsFor(m_recent.List()), &service, callbacks);
        if (outcome.recorded != 0) {
            m_workspace.status.ShowResult(
                Counted(static_cast<std::size_t>(outcome.recorded), "message imported", "messages imported"));
            SetWarnings(outcome.warnings);
        }
        if (!outcome.failure.empty()) m_workspace.notice.Warn(Text(outcome.failure));
    } catch (const std::exception& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Nothing was imported."));
    }
    m_import.SetPaused(false);
    m_workspace.library.Reload();
}

/// The dialog opens with the directories of the current message, or of the latest disk.
void ImportCommands::FillModulesDialog() {
    QStringList paths{m_workspace.library.CurrentSource()};
    paths.append(m_recent.List());
    for (const QString& path : paths) {
        if (path.isEmpty() || !QFileInfo::exists(path)) continue;
        return m_desktop.SetDirectories(DirectoriesOf(QFile::encodeName(path).toStdString()));
    }
}

void ImportCommands::SetWarnings(std::vector<MessageWarnings> warnings) {
    std::ranges::sort(warnings, {}, &MessageWarnings::key);
    m_warnings = std::move(warnings);
    m_workspace.status.ShowWarnings(m_warnings.size());
    if (m_warnings_window) m_warnings_window->close();
    Q_EMIT warningsChanged();
}

void ImportCommands::ShowWarnings() {
    if (!m_warnings_window) {
        m_warnings_window = new WarningsWindow(&m_workspace.window);
        connect(m_warnings_window, &WarningsWindow::chosen, &m_workspace.library, &LibraryPanel::SelectSoon);
    }
    m_warnings_window->Show(m_warnings);
}

void ImportCommands::ChangeOptions() {
    ImportOptionsDialog(m_workspace.settings, &m_workspace.window).exec();
}

void ImportCommands::ReloadLibrary() {
    m_names = {};
    m_workspace.library.Reload();
}

}  // namespace zel::desktop
