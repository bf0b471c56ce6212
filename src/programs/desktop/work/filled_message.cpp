#include "programs/desktop/work/filled_message.h"

#include <utility>

#include "files/message_writer.h"
#include "fill/fill_fields.h"
#include "programs/desktop/common/text.h"

namespace zel::desktop {

namespace {

/// Each has a picture.
constexpr int kMostChanges = 200;

}  // namespace

/// Goes from one state to another. Neither direction can fail.
class FilledMessage::Change : public QUndoCommand {
  public:
    Change(FilledMessage& message, int field, std::shared_ptr<const State> after)
        : QUndoCommand(message.NameOf(field)),
          m_message(message),
          m_field(field),
          m_before(message.m_state),
          m_after(std::move(after)) {}

    void undo() override { Show(m_before); }
    void redo() override { Show(m_after); }

  private:
    void Show(const std::shared_ptr<const State>& state) {
        m_message.m_state = state;
        Q_EMIT m_message.changed(m_field);
    }

    FilledMessage& m_message;
    const int m_field;
    const std::shared_ptr<const State> m_before, m_after;
};

FilledMessage::FilledMessage(const library::Recording& recorded, const host::HostOptions& options)
    : m_form(ReadRecordedForm(recorded)), m_preview(m_form.file, m_form.font_directory, options) {
    auto state = std::make_shared<State>();
    state->message = m_form.form.message;
    state->bytes = files::WriteMessage(state->message);
    state->recording = recorded;
    m_state = std::move(state);
    m_changes.setUndoLimit(kMostChanges);
}

QString FilledMessage::NameOf(int field) const {
    return Text(m_form.form.fields[static_cast<std::size_t>(field)].address);
}

QString FilledMessage::TextOf(int field) const {
    return Text(fill::PresentText(m_state->message, m_form.form.fields[static_cast<std::size_t>(field)]));
}

RecordedForm FilledMessage::Form() const {
    RecordedForm form = m_form;
    form.form = fill::MakeForm(m_state->message, m_form.form.fonts);
    return form;
}

/// A fault, with the field's name unless it is the one that the user is changing.
QString FilledMessage::FaultText(const fill::FieldNote& fault, int changed) const {
    const QString text = Text(fault.text);
    const auto field = static_cast<int>(fault.field);
    return field == changed ? text : NameOf(field) + QStringLiteral(": ") + text;
}

/// Makes message, bytes and recording from the texts. All texts are set into the original message, so that the result
/// does not depend on the order of the changes.
QString FilledMessage::Fill(State& state, int field) {
    std::vector<fill::FieldValue> values;
    for (const auto& [index, text] : state.texts) values.push_back({static_cast<std::size_t>(index), text});
    fill::Filled filled = fill::FillFields(m_form.form, values, fill::Overflow::kError);
    if (!filled.faults.empty()) return FaultText(filled.faults.front(), field);
    state.message = std::move(filled.message);
    state.bytes = files::WriteMessage(state.message);
    MessagePreview::Result result = m_preview.Import(state.bytes);
    if (!result.failure.empty()) return Text(result.failure);
    const library::Recording& recorded = m_state->recording;
    state.recording = m_preview.RecordingOf(std::move(*result.arrived), {recorded.disk, recorded.number});
    return {};
}

QString FilledMessage::SetText(int field, const QString& text) {
    if (text == TextOf(field)) return {};
    auto after = std::make_shared<State>();
    after->texts = m_state->texts;
    after->texts[field] = text.toStdString();
    const QString fault = Fill(*after, field);
    if (fault.isEmpty()) m_changes.push(new Change(*this, field, std::move(after)));
    return fault;
}

}  // namespace zel::desktop
