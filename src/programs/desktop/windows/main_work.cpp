#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <algorithm>
#include <utility>

#include "host/library/library.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/windows/export_dialog.h"
#include "programs/desktop/windows/fetch_dialog.h"
#include "programs/desktop/windows/glyph_sheet_window.h"
#include "programs/desktop/windows/import_options_dialog.h"
#include "programs/desktop/windows/library_panel.h"
#include "programs/desktop/windows/main_window.h"
#include "programs/desktop/windows/pick.h"
#include "programs/desktop/windows/remote_chooser.h"
#include "programs/desktop/work/dialog_import.h"

namespace zel::desktop {

namespace {

/// The first lines, and how many more there are.
QString Beginning(const QStringList& lines) {
    constexpr qsizetype kShown = 4;
    QString text = lines.mid(0, kShown).join(u'\n');
    if (lines.size() > kShown) text += QStringLiteral("\n… and %1 more").arg(lines.size() - kShown);
    return text;
}

}  // namespace

void MainWindow::Open(const QStringList& paths) {
    for (const QString& path : paths) AddPlace(QFileInfo(path).absoluteFilePath());
}

void MainWindow::AddPlace(const QString& path) {
    const std::string place = QFile::encodeName(QDir::cleanPath(path)).toStdString();
    const QFileInfo info(path);
    if (!info.exists()) return Warn(tr("%1: there is no such file or folder.").arg(path));
    if (!info.isReadable()) return Warn(tr("%1 can't be read.").arg(path), tr("Ask for the right to read it."));
    if (info.isFile() && KindOf(place) == FileKind::kFont) return ShowFont(path);
    try {
        library::Library library(m_places.library, library::Access::kWrite, kLibraryWait);
        const MessageSource source = FindMessages(place, library, m_names);
        if (source.messages.empty()) {
            return info.isDir()
                       ? Warn(tr("%1 holds no messages.").arg(path),
                              tr("A disk is a folder with MESSAGES and MACHINE in it; any other folder with message "
                                 "files serves too."))
                       : Warn(tr("%1 is neither a message nor a font.").arg(path),
                              tr("Message files lie in the folder MESSAGES of a disk, fonts in MACHINE; their names "
                                 "are a dot and a number, such as .0012."));
        }
        m_import->Add(source, ImportOptions({QFile::decodeName(source.directory.c_str())}));
        if (info.isDir()) Remember(path);
    } catch (const library::LibraryError& error) {
        Warn(Text(error.what()), tr("Nothing was imported. Close the program that holds the library, or look after the "
                                    "file, then try again."));
    } catch (const std::exception& error) {
        Warn(Text(error.what()));
    }
    EnableActions();
}

/// Where a file dialog begins: where it ended the last time, else in the disk that was opened last, else at home.
QString MainWindow::StartFolder(const QString& setting, const QString& in_disk) const {
    QStringList folders{m_settings.value(setting).toString()};
    for (const QString& disk : RecentDisks()) folders << QDir::cleanPath(disk + u'/' + in_disk) << disk;
    const auto found = std::find_if(folders.cbegin(), folders.cend(),
                                    [](const QString& folder) { return !folder.isEmpty() && QDir(folder).exists(); });
    return found != folders.cend() ? *found : QDir::homePath();
}

void MainWindow::ImportFiles() {
    const QStringList files =
        PickFiles(this, tr("Import message files"),
                  StartFolder(QStringLiteral("import/directory"), QStringLiteral("MESSAGES")), true);
    if (files.isEmpty()) return;
    m_settings.setValue(QStringLiteral("import/directory"), QFileInfo(files.front()).absolutePath());
    m_notice->Clear();
    Open(files);
}

void MainWindow::ImportFolder() {
    const QString folder = PickFolder(this, tr("Import a disk or folder"),
                                      StartFolder(QStringLiteral("import/disk"), QStringLiteral("..")));
    if (folder.isEmpty()) return;
    m_settings.setValue(QStringLiteral("import/disk"), QFileInfo(folder).absolutePath());
    m_notice->Clear();
    Open({folder});
}

void MainWindow::ImportEnded(const ImportSummary& summary) {
    m_library->Reload();
    EndTask(summary.Text());
    if (!summary.stopped_by.isEmpty()) {
        Warn(summary.stopped_by, tr("%1. What was recorded stays. When the library can be written again, import once "
                                    "more: what is unchanged is passed over.")
                                     .arg(summary.Text()));
    } else if (!summary.failures.isEmpty()) {
        Warn(Beginning(summary.failures));
    }
}

void MainWindow::ImportByModule() {
    const auto later = [this](const std::function<void()>& call) {
        QMetaObject::invokeMethod(this, call, Qt::QueuedConnection);
    };
    DialogImportTold told;
    told.recorded = [this, later](const library::RecordingKey& key) {
        later([this, key] { m_library->ChooseSoon(key); });
    };
    told.failed = [later](const std::string& reason) {
        later([text = Text(reason)] {
            QMessageBox::warning(QApplication::activeWindow(), tr("ZelTrans"),
                                 tr("%1\n\nWhat is imported from now on isn't kept in the library. Close the import "
                                    "dialog, free some space or close the program that holds the library, and import "
                                    "again.")
                                     .arg(text));
        });
    };
    ftp::FetchServiceOptions service_options;
    service_options.chooser = [](const ftp::RemoteView& view) {
        return ChooseRemote(view, QApplication::activeModalWidget());
    };
    ftp::FetchService service(std::move(service_options));
    m_notice->Clear();
    m_import->SetPaused(true);
    try {
        const DialogImportOutcome outcome =
            ImportByDialog(m_places.library, m_desktop, ImportOptions(RecentDisks()), &service, told);
        if (!outcome.failure.empty()) Warn(Text(outcome.failure));
    } catch (const std::exception& error) {
        Warn(Text(error.what()), tr("Nothing was imported."));
    }
    m_import->SetPaused(false);
    m_library->Reload();
}

void MainWindow::ShowFont(const QString& file) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const FontSheet sheet = MakeFontSheet(QFile::encodeName(file).toStdString());
    QApplication::restoreOverrideCursor();
    if (!sheet.failure.empty()) {
        return Warn(
            Text(sheet.failure),
            tr("Fonts lie in the folder MACHINE of a disk; their names are a dot and a number, such as .0012."));
    }
    (new GlyphSheetWindow(sheet, this))->show();
}

void MainWindow::MakeFont() {
    const QStringList files = PickFiles(
        this, tr("Make font"), StartFolder(QStringLiteral("font/directory"), QStringLiteral("MACHINE")), false);
    if (files.isEmpty()) return;
    m_settings.setValue(QStringLiteral("font/directory"), QFileInfo(files.front()).absolutePath());
    ShowFont(files.front());
}

namespace {

ExportDialog::Offer OfferOf(const LibraryPanel& library, const std::string& file,
                            const std::optional<library::Recording>& now, bool asks_range) {
    ExportDialog::Offer offer{library.Selected(),
                              library.Shown(),
                              library::Library(file, library::Access::kRead, kLibraryWait).Disks(),
                              {},
                              asks_range};
    offer.disk = now ? now->disk : offer.disks.empty() ? std::string() : offer.disks.front();
    return offer;
}

std::vector<library::RecordingKey> KeysOf(const ExportDialog& dialog, const std::string& file) {
    const ExportDialog::Choice choice = dialog.Chosen();
    if (!choice.is_range) return choice.keys;
    std::vector<library::RecordingKey> keys;
    for (const library::LibraryEntry& entry :
         library::Library(file, library::Access::kRead, kLibraryWait).List(dialog.Disk())) {
        if (entry.key.number >= choice.first && entry.key.number <= choice.last) keys.push_back(entry.key);
    }
    return keys;
}

}  // namespace

void MainWindow::Export() try {
    ExportDialog dialog(OfferOf(*m_library, m_places.library, m_current, false), m_settings, this);
    if (dialog.exec() != QDialog::Accepted) return;
    m_notice->Clear();
    std::vector<library::RecordingKey> keys = KeysOf(dialog, m_places.library);
    if (keys.empty()) return Warn(tr("No message of this disk has a number in this range."));
    const auto total = static_cast<int>(keys.size());
    m_export = new ExportTask(m_places.library, std::move(keys), dialog.Order(), this);
    connect(m_export, &ExportTask::progressed, this, [this](int done, int of) { ShowTask(tr("Exporting"), done, of); });
    connect(m_export, &ExportTask::finished, this,
            [this, directory = dialog.Order().directory](const ExportResult& result) {
                std::exchange(m_export, nullptr)->deleteLater();
                ExportEnded(result, directory);
            });
    ShowTask(tr("Exporting"), 0, total);
    m_export->Start();
} catch (const library::LibraryError& error) {
    Warn(Text(error.what()), tr("Nothing was exported."));
}

void MainWindow::ExportEnded(const ExportResult& result, const QString& directory) {
    EndTask(result.Text(directory));
    if (!result.stopped_by.isEmpty()) {
        Warn(result.stopped_by, tr("Choose another folder, or other formats, and export again."));
    } else if (!result.failures.isEmpty()) {
        Warn(Beginning(result.failures), result.files != 0
                                             ? tr("Everything else is in %1.").arg(directory)
                                             : tr("Choose another folder, or free some space, and export again."));
    }
}

void MainWindow::BatchExport() try {
    ExportDialog dialog(OfferOf(*m_library, m_places.library, m_current, true), m_settings, this);
    if (dialog.exec() != QDialog::Accepted) return;
    m_notice->Clear();
    const ExportOrder order = dialog.Order();
    ExportEnded(ExportByDialog(m_places.library, dialog.Disk(), order), order.directory);
} catch (const library::LibraryError& error) {
    Warn(Text(error.what()), tr("Nothing was exported."));
}

void MainWindow::Fetch() {
    FetchDialog dialog(m_settings, this);
    if (dialog.exec() != QDialog::Accepted) return;
    m_notice->Clear();
    const FetchOrder order = dialog.Order();
    m_fetch = new FetchTask(order, this);
    connect(m_fetch, &FetchTask::progressed, this, [this](const QString& name, qint64 bytes, qint64 size) {
        constexpr int kParts = 1000;
        ShowTask(tr("Fetching %1").arg(name), size > 0 ? static_cast<int>(bytes * kParts / size) : 0,
                 size > 0 ? kParts : 0);
    });
    connect(m_fetch, &FetchTask::finished, this,
            [this, directory = order.directory, imports = dialog.ImportsAfterwards()](const FetchResult& result) {
                std::exchange(m_fetch, nullptr)->deleteLater();
                FetchEnded(result, directory, imports);
            });
    ShowTask(tr("Connecting"), 0, 0);
    m_fetch->Start();
}

void MainWindow::FetchEnded(const FetchResult& result, const QString& directory, bool imports) {
    EndTask(result.summary);
    if (!result.failure.isEmpty()) {
        Warn(result.failure, result.tried_files
                                 ? tr("What has come stays in %1; fetching again goes on from there.").arg(directory)
                                 : QString());
    } else if (!result.failed.isEmpty()) {
        Warn(Beginning(result.failed));
    }
    if (imports && !result.cancelled && result.failure.isEmpty()) Open({directory});
}

void MainWindow::StopTask() {
    m_import->Cancel();
    if (m_export) m_export->Cancel();
    if (m_fetch) m_fetch->Cancel();
}

void MainWindow::ChangeImportOptions() {
    ImportOptionsDialog(m_settings, this).exec();
}

}  // namespace zel::desktop
