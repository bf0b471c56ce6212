#include "programs/desktop/windows/fetch_commands.h"

#include <QMainWindow>
#include <utility>

#include "programs/desktop/common/text.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/status_line.h"
#include "programs/desktop/windows/fetch_dialog.h"

namespace zel::desktop {

void FetchCommands::Fetch() {
    FetchDialog dialog(m_workspace.settings, &m_workspace.window);
    if (dialog.exec() != QDialog::Accepted) return;
    m_workspace.BeginAction();
    const FetchSettings settings = dialog.Settings();
    m_task = new FetchTask(settings, this);
    connect(m_task, &FetchTask::progressed, this, [this](const QString& name, qint64 bytes, qint64 size) {
        constexpr int kSteps = 1000;
        m_workspace.status.ShowTask(tr("Fetching %1").arg(name), size > 0 ? static_cast<int>(bytes * kSteps / size) : 0,
                                    size > 0 ? kSteps : 0);
    });
    connect(m_task, &FetchTask::finished, this,
            [this, directory = settings.Folder(), imports = dialog.ImportsAfterwards()](const FetchResult& result) {
                std::exchange(m_task, nullptr)->deleteLater();
                Ended(result, directory, imports);
            });
    m_workspace.status.ShowTask(tr("Connecting"), 0, 0);
    m_task->Start();
}

void FetchCommands::Ended(const FetchResult& result, const QString& directory, bool imports) {
    m_workspace.status.EndTask(result.summary);
    if (!result.failure.isEmpty()) {
        m_workspace.notice.Warn(result.failure,
                                result.tried_files
                                    ? tr("The files fetched so far are in %1. Fetch again to continue.").arg(directory)
                                    : QString());
    } else if (!result.failed_files.isEmpty()) {
        m_workspace.notice.Warn(FirstLines(result.failed_files));
    }
    if (!result.kept_files.isEmpty()) {
        m_workspace.notice.Warn(
            tr("Existing files in %1 were left as they were: %2").arg(directory, FirstNames(result.kept_files)),
            tr("To replace them, fetch again with “Overwrite existing files”."));
    }
    if (imports && !result.cancelled && result.failure.isEmpty()) Q_EMIT importRequested(directory);
}

void FetchCommands::Cancel() {
    if (m_task) m_task->Cancel();
}

}  // namespace zel::desktop
