#include "programs/desktop/windows/export_commands.h"

#include <QMainWindow>
#include <utility>

#include "host/library/library.h"
#include "programs/desktop/common/library_wait.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/status_line.h"
#include "programs/desktop/windows/export_dialog.h"
#include "programs/desktop/windows/library_panel.h"

namespace zel::desktop {

namespace {

library::Library OpenLibrary(const Workspace& workspace) {
    return library::Library(workspace.places.library, library::Access::kRead, kLibraryWait);
}

ExportDialog::Offer OfferOf(const Workspace& workspace, bool asks_range) {
    ExportDialog::Offer offer{
        workspace.library.Selected(), workspace.library.Shown(), OpenLibrary(workspace).Disks(), {}, asks_range};
    if (workspace.current) {
        offer.disk = workspace.current->disk;
    } else if (!offer.disks.empty()) {
        offer.disk = offer.disks.front();
    }
    return offer;
}

std::vector<library::RecordingKey> KeysOf(const ExportDialog& dialog, const Workspace& workspace) {
    const ExportDialog::Choice choice = dialog.Chosen();
    if (!choice.is_range) return choice.keys;
    std::vector<library::RecordingKey> keys;
    for (const library::LibraryEntry& entry : OpenLibrary(workspace).List(dialog.Disk())) {
        if (entry.key.number >= choice.first && entry.key.number <= choice.last) keys.push_back(entry.key);
    }
    return keys;
}

}  // namespace

void ExportCommands::Export() try {
    ExportDialog dialog(OfferOf(m_workspace, false), m_workspace.settings, &m_workspace.window);
    if (dialog.exec() != QDialog::Accepted) return;
    m_workspace.BeginAction();
    std::vector<library::RecordingKey> keys = KeysOf(dialog, m_workspace);
    if (keys.empty()) return m_workspace.notice.Warn(tr("No message of this disk has a number in this range."));
    WarnOfChanges();
    Start(std::move(keys), dialog.Settings());
} catch (const library::LibraryError& error) {
    m_workspace.notice.Warn(Text(error.what()), tr("Nothing was exported."));
}

/// The export reads the library.
void ExportCommands::WarnOfChanges() {
    if (!m_workspace.window.isWindowModified()) return;
    m_workspace.notice.Warn(tr("The changed texts of the current message are not exported, but what is recorded."),
                            tr("Use Save and record… in the menu File first, then export the new recording."));
}

void ExportCommands::Start(std::vector<library::RecordingKey> keys, const ExportSettings& settings) {
    const auto total = static_cast<int>(keys.size());
    m_task = new ExportTask(m_workspace.places.library, std::move(keys), settings, this);
    connect(m_task, &ExportTask::progressed, this,
            [this](int done, int of) { m_workspace.status.ShowTask(tr("Exporting"), done, of); });
    connect(m_task, &ExportTask::finished, this, [this, directory = settings.directory](const ExportResult& result) {
        std::exchange(m_task, nullptr)->deleteLater();
        Ended(result, directory);
    });
    m_workspace.status.ShowTask(tr("Exporting"), 0, total);
    m_task->Start();
}

void ExportCommands::BatchExport() try {
    ExportDialog dialog(OfferOf(m_workspace, true), m_workspace.settings, &m_workspace.window);
    if (dialog.exec() != QDialog::Accepted) return;
    m_workspace.BeginAction();
    WarnOfChanges();
    const ExportSettings settings = dialog.Settings();
    Ended(ExportByDialog(m_workspace.places.library, dialog.Disk(), settings), settings.directory);
} catch (const library::LibraryError& error) {
    m_workspace.notice.Warn(Text(error.what()), tr("Nothing was exported."));
}

void ExportCommands::Ended(const ExportResult& result, const QString& directory) {
    m_workspace.status.EndTask(result.Text(directory));
    if (!result.stopped_by.isEmpty()) {
        m_workspace.notice.Warn(result.stopped_by, tr("Choose another folder or other formats, then export again."));
    } else if (!result.failures.isEmpty()) {
        m_workspace.notice.Warn(FirstLines(result.failures),
                                result.files != 0 ? tr("All other files are in %1.").arg(directory)
                                                  : tr("Choose another folder or free disk space, then export again."));
    }
}

void ExportCommands::Cancel() {
    if (m_task) m_task->Cancel();
}

}  // namespace zel::desktop
