#pragma once

#include <QObject>
#include <QPointer>

#include "programs/desktop/windows/workspace.h"
#include "programs/desktop/work/export_task.h"

namespace zel::desktop {

/// Exports messages of the library.
class ExportCommands : public QObject {
    Q_OBJECT

  public:
    /// @param workspace  outlives the object.
    explicit ExportCommands(const Workspace& workspace) : m_workspace(workspace) {}

    /// Asks for messages and formats and starts the export.
    void Export();
    /// Exports with the module's batch dialog.
    void BatchExport();

    bool IsRunning() const { return !m_task.isNull(); }
    void Cancel();

  private:
    void WarnOfChanges();
    void Start(std::vector<library::RecordingKey> keys, const ExportSettings& settings);
    void Ended(const ExportResult& result, const QString& directory);

    const Workspace& m_workspace;
    QPointer<ExportTask> m_task;
};

}  // namespace zel::desktop
