#pragma once

#include <QObject>
#include <QStringList>

#include "programs/desktop/windows/workspace.h"

namespace zel::desktop {

/// Opens and creates libraries, and keeps a list of recent ones in the settings.
class LibraryCommands : public QObject {
    Q_OBJECT

  public:
    /// @param workspace  outlives the object.
    explicit LibraryCommands(const Workspace& workspace) : m_workspace(workspace) {}

    /// Asks for a library and opens it.
    void Open();
    /// Asks for a new file and creates a library.
    void New();
    /// Opens a library. If that fails, a notice explains why, and the present one stays open.
    void OpenFile(const QString& file);

    /// The latest first, with the present one. Missing files are left out.
    QStringList Recent() const;
    /// Adds a library to the recent ones.
    void AddRecent(const QString& file);

  Q_SIGNALS:
    /// A library can be read and is to be shown.
    void opened(const QString& file);

  private:
    QString Folder() const;

    const Workspace& m_workspace;
};

}  // namespace zel::desktop
