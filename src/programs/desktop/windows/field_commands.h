#pragma once

#include <QObject>
#include <memory>
#include <optional>

#include "programs/desktop/windows/workspace.h"

namespace zel::desktop {

class FieldEditor;
class FilledMessage;
class ImportCommands;
class PictureView;

/// Changes the texts of the current message's tab fields, in its picture, and saves the changed message.
class FieldCommands : public QObject {
    Q_OBJECT

  public:
    /// All outlive the object.
    FieldCommands(const Workspace& workspace, PictureView& view, ImportCommands& imports);
    ~FieldCommands() override;

    /// Opens a field of the current message in its picture. A field that is open is closed first, with its text.
    /// @param field  index in MessageDetails::fields.
    void Edit(int field);
    /// Saves the changed message, or the unchanged one, as a message file.
    /// @return false if nothing was saved.
    bool Save() { return !SaveAndReturn().isEmpty(); }
    /// Saves likewise, then imports the file.
    void SaveAndRecord();

    /// Asks for a table and opens a window in which its records fill the fields of the current message.
    void FillFromTable();

    bool HasChanges() const;
    bool CanUndo() const;
    bool CanRedo() const;
    void Undo();
    void Redo();
    /// Name of the field whose change is undone or done again next.
    QString UndoText() const;
    QString RedoText() const;

    /// Asks what to do with unsaved changes, if there are any.
    /// @return false if the user wants to stay with the message.
    bool MayLeave();
    /// Forgets the message and its changes.
    void Leave();
    /// Of the message that is being changed; empty for none.
    std::optional<library::RecordingKey> Key() const;
    /// The message with its changes. Only while Key has a value.
    const library::Recording& Recording() const;

  Q_SIGNALS:
    /// Recording has changed.
    /// @param field  whose text is another one.
    void changed(int field);
    /// What can be undone, or HasChanges, has changed.
    void stateChanged();

  private:
    bool Begin();
    void Open(int field);
    void PlaceEditor();
    bool Apply();
    void Close();
    void ApplyAndStep(int step);
    QString SaveAndReturn();
    QString FileToSave();
    bool SaveAs(const QString& file);

    const Workspace& m_workspace;
    PictureView& m_view;
    ImportCommands& m_imports;
    FieldEditor* m_editor;
    /// In the editor; -1 for none.
    int m_field = -1;
    std::unique_ptr<FilledMessage> m_message;
};

}  // namespace zel::desktop
