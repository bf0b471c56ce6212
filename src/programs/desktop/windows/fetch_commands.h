#pragma once

#include <QObject>
#include <QPointer>

#include "programs/desktop/windows/workspace.h"
#include "programs/desktop/work/fetch_task.h"

namespace zel::desktop {

/// Fetches messages and fonts over FTP.
class FetchCommands : public QObject {
    Q_OBJECT

  public:
    /// @param workspace  outlives the object.
    explicit FetchCommands(const Workspace& workspace) : m_workspace(workspace) {}

    /// Asks for a server and starts the fetch.
    void Fetch();

    bool IsRunning() const { return !m_task.isNull(); }
    void Cancel();

  Q_SIGNALS:
    /// A fetch has succeeded, and the user wants its files imported.
    void importRequested(const QString& directory);

  private:
    void Ended(const FetchResult& result, const QString& directory, bool imports);

    const Workspace& m_workspace;
    QPointer<FetchTask> m_task;
};

}  // namespace zel::desktop
