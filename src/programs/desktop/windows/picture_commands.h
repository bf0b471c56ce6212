#pragma once

#include <QObject>
#include <QTemporaryDir>
#include <memory>

#include "programs/desktop/windows/workspace.h"

class QMimeData;

namespace zel::desktop {

class PictureView;

/// Copies, drags and saves the current picture, and removes messages from the library.
class PictureCommands : public QObject {
    Q_OBJECT

  public:
    /// Both outlive the object.
    PictureCommands(const Workspace& workspace, PictureView& view) : m_workspace(workspace), m_view(view) {}

    void Copy();
    void Drag();
    void Save();
    /// Removes the selected messages after a confirmation.
    void RemoveSelected();

  private:
    bool HasPicture() const;
    std::unique_ptr<QMimeData> Data() const;

    const Workspace& m_workspace;
    PictureView& m_view;
    QTemporaryDir m_dragged;
};

}  // namespace zel::desktop
