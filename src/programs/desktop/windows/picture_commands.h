#pragma once

#include <QObject>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <vector>

#include "programs/desktop/windows/workspace.h"
#include "programs/desktop/work/picture_form.h"

class QMimeData;

namespace zel::desktop {

class PictureView;

/// Copies, drags and saves pictures and texts of messages, and removes messages from the library.
class PictureCommands : public QObject {
    Q_OBJECT

  public:
    /// Both outlive the object.
    PictureCommands(const Workspace& workspace, PictureView& view) : m_workspace(workspace), m_view(view) {}

    /// Copies the current picture.
    void Copy();
    /// Copies the texts of the selected messages.
    void CopyText();
    /// Drags the current picture.
    void Drag();
    /// Drags the pictures of the selected messages as files.
    void DragSelected();
    /// Asks for a file and saves the current picture, or for a folder if several messages are selected.
    void Save(PictureForm form);
    /// Opens the folder that contains the file of the current message.
    void ShowInFolder();
    /// Removes the selected messages. Asks first if there are too many to restore them.
    void RemoveSelected();
    /// Restores the messages that were removed last, unless they were imported again.
    void UndoRemoval();
    bool CanUndo() const noexcept { return !m_removed.empty(); }

  Q_SIGNALS:
    /// CanUndo has changed.
    void undoChanged();

  private:
    bool HasPicture() const;
    std::unique_ptr<QMimeData> Data() const;
    QString SaveFolder() const;
    void SaveOne(PictureForm form);
    void SaveSelected(const std::vector<library::RecordingKey>& keys, PictureForm form);
    QStringList WritePictures(const std::vector<library::RecordingKey>& keys, PictureForm form,
                              const QString& folder) const;
    void StartDrag(std::unique_ptr<QMimeData> data);
    void Remove(const std::vector<library::RecordingKey>& keys);

    const Workspace& m_workspace;
    PictureView& m_view;
    QTemporaryDir m_dragged;
    /// For UndoRemoval.
    std::vector<library::Recording> m_removed;
    /// The library that they were removed from.
    std::string m_removed_from;
};

}  // namespace zel::desktop
