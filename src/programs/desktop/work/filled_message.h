#pragma once

#include <QObject>
#include <QUndoStack>
#include <map>
#include <memory>

#include "files/byte_writer.h"
#include "fill/fill_fields.h"
#include "programs/desktop/work/message_preview.h"
#include "programs/desktop/work/recorded_form.h"

namespace zel::desktop {

/// A recorded message with changed texts in its tab fields, as bytes of a message file and as a recording. Each change
/// can be undone. The library and the files stay as they are.
class FilledMessage : public QObject {
    Q_OBJECT

  public:
    /// @throws std::runtime_error as ReadRecordedForm.
    FilledMessage(const library::Recording& recorded, const host::HostOptions& options);

    int FieldCount() const { return static_cast<int>(m_form.form.fields.size()); }
    /// The name by which tables name the field.
    QString NameOf(int field) const;
    QString TextOf(int field) const;

    /// Changes the text of a field.
    /// @return why the text is not possible, and nothing is changed; else empty.
    QString SetText(int field, const QString& text);
    QUndoStack& Changes() noexcept { return m_changes; }

    /// The bytes of the message file.
    const files::Bytes& Bytes() const noexcept { return m_state->bytes; }
    /// The message as it would be recorded.
    const library::Recording& Recording() const noexcept { return m_state->recording; }
    /// The form with the changed texts.
    RecordedForm Form() const;
    /// Path of the message's file, in this system's form.
    const std::string& File() const noexcept { return m_form.file; }

  Q_SIGNALS:
    /// A text was changed, or a change was undone or done again.
    void changed(int field);

  private:
    struct State {
        /// The texts that were changed, by field.
        std::map<int, std::string> texts;
        files::MessageFile message;
        files::Bytes bytes;
        library::Recording recording;
    };
    class Change;
    QString Fill(State& state, int field);
    QString FaultText(const fill::FieldNote& fault, int changed) const;

    RecordedForm m_form;
    MessagePreview m_preview;
    std::shared_ptr<const State> m_state;
    QUndoStack m_changes;
};

}  // namespace zel::desktop
