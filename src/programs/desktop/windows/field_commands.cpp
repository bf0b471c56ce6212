#include "programs/desktop/windows/field_commands.h"

#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QSettings>
#include <QUndoStack>
#include <filesystem>

#include "programs/desktop/common/text.h"
#include "programs/desktop/models/message_details.h"
#include "programs/desktop/widgets/field_editor.h"
#include "programs/desktop/widgets/notice_bar.h"
#include "programs/desktop/widgets/picture_view.h"
#include "programs/desktop/widgets/status_line.h"
#include "programs/desktop/windows/box.h"
#include "programs/desktop/windows/fill_window.h"
#include "programs/desktop/windows/import_commands.h"
#include "programs/desktop/windows/pick.h"
#include "programs/desktop/work/filled_message.h"
#include "programs/desktop/work/new_file.h"

namespace zel::desktop {

namespace {

const QString kTableSetting = QStringLiteral("fill/table");
const QString kMessageFolderSetting = QStringLiteral("save/messages");

/// A name for another message file in a folder: the next number that no file has. A name without a number stays.
QString FreeName(const QString& folder, const QString& name) {
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString digits = name.mid(dot + 1);
    bool is_number = false;
    int number = digits.toInt(&is_number);
    if (dot < 0 || !is_number || number < 0) return name;
    constexpr int kLast = 9999;
    while (++number <= kLast) {
        const QString free = name.left(dot + 1) + QString::number(number).rightJustified(digits.size(), u'0');
        if (!QFileInfo::exists(folder + u'/' + free)) return free;
    }
    return name;
}

bool IsSameFile(const QString& a, const QString& b) {
    std::error_code error;
    return std::filesystem::equivalent(QFile::encodeName(a).toStdString(), QFile::encodeName(b).toStdString(), error);
}

}  // namespace

FieldCommands::FieldCommands(const Workspace& workspace, PictureView& view, ImportCommands& imports)
    : m_workspace(workspace), m_view(view), m_imports(imports), m_editor(new FieldEditor(view.viewport())) {
    connect(m_editor, &FieldEditor::applied, this, &FieldCommands::ApplyAndStep);
    connect(m_editor, &FieldEditor::cancelled, this, &FieldCommands::Close);
    connect(m_editor, &FieldEditor::edited, this, &FieldCommands::stateChanged);
    connect(m_editor, &FieldEditor::resized, this, [this] {
        if (m_field >= 0) PlaceEditor();
    });
}

FieldCommands::~FieldCommands() {
    // The window's other parts, which follow the changes, do not exist any more.
    blockSignals(true);
}

/// Reads the current message, if that has not been done.
bool FieldCommands::Begin() {
    if (m_message) return true;
    if (!m_workspace.current) return false;
    const library::Recording& recorded = *m_workspace.current;
    try {
        const QString folder = QFile::decodeName(
            recorded.sources.empty() ? "" : std::filesystem::path(recorded.sources.front().path).parent_path().c_str());
        m_message = std::make_unique<FilledMessage>(recorded, m_workspace.OptionsFor({folder}));
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("The tab fields of this message cannot be changed."));
        return false;
    }
    connect(m_message.get(), &FilledMessage::changed, this, &FieldCommands::changed);
    for (const auto& changed : {&QUndoStack::cleanChanged, &QUndoStack::canUndoChanged, &QUndoStack::canRedoChanged})
        connect(&m_message->Changes(), changed, this, &FieldCommands::stateChanged);
    connect(&m_message->Changes(), &QUndoStack::indexChanged, this, &FieldCommands::stateChanged);
    return true;
}

void FieldCommands::Edit(int field) {
    m_workspace.BeginAction();
    if (Begin() && Apply()) Open(field);
}

void FieldCommands::Open(int field) {
    if (field < 0 || field >= m_message->FieldCount()) return;
    m_field = field;
    m_editor->Open(m_message->NameOf(field), m_message->TextOf(field));
    PlaceEditor();
}

void FieldCommands::PlaceEditor() {
    const std::vector<library::RecordedField>& fields = m_message->Recording().fields;
    const auto at = static_cast<std::size_t>(m_field);
    if (at >= fields.size()) return;
    const library::RecordedField& field = fields[at];
    m_view.SetOverlay(m_editor, QRect(field.left, field.top, field.right - field.left, field.bottom - field.top));
}

/// Takes the text of the editor and closes it.
/// @return false if the text is not possible; the editor then shows why.
bool FieldCommands::Apply() {
    if (m_field < 0) return true;
    const QString fault = m_message->SetText(m_field, m_editor->Text());
    if (!fault.isEmpty()) {
        m_editor->ShowFault(fault.left(1).toUpper() + fault.mid(1));
        return false;
    }
    Close();
    return true;
}

void FieldCommands::ApplyAndStep(int step) {
    const int field = m_field;
    if (!Apply() || step == 0) return;
    const int count = m_message->FieldCount();
    Open((field + step + count) % count);
}

void FieldCommands::Close() {
    m_field = -1;
    const bool had_focus = m_editor->isAncestorOf(m_workspace.window.focusWidget());
    m_view.SetOverlay(nullptr);
    m_editor->hide();
    if (had_focus) m_view.setFocus(Qt::OtherFocusReason);
    Q_EMIT stateChanged();
}

bool FieldCommands::HasChanges() const {
    return m_message && (!m_message->Changes().isClean() || (m_field >= 0 && m_editor->IsChanged()));
}

bool FieldCommands::CanUndo() const {
    return m_message && m_message->Changes().canUndo();
}

bool FieldCommands::CanRedo() const {
    return m_message && m_message->Changes().canRedo();
}

void FieldCommands::Undo() {
    m_workspace.BeginAction();
    Close();
    m_message->Changes().undo();
}

void FieldCommands::Redo() {
    m_workspace.BeginAction();
    Close();
    m_message->Changes().redo();
}

QString FieldCommands::UndoText() const {
    return m_message ? m_message->Changes().undoText() : QString();
}

QString FieldCommands::RedoText() const {
    return m_message ? m_message->Changes().redoText() : QString();
}

QString FieldCommands::FileToSave() {
    const QString source = QFile::decodeName(m_message->File().c_str());
    const QString folder =
        m_workspace.settings.value(kMessageFolderSetting, QFileInfo(source).absolutePath()).toString();
    const QString file =
        PickNewFile(&m_workspace.window, tr("Save as message file"),
                    folder + u'/' + FreeName(folder, QFileInfo(source).fileName()), {{}, tr("Message files (*)")});
    if (file.isEmpty() || !IsSameFile(file, source)) return file;
    const auto answer =
        RunBox(&m_workspace.window, QMessageBox::Question, tr("Save as message file"),
               tr("%1 is the file from which this message was imported. Replace it? It cannot be restored. The "
                  "library imports it again.")
                   .arg(file),
               QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel);
    return answer == QMessageBox::Yes ? file : QString();
}

/// @return the file; empty if nothing was saved.
QString FieldCommands::SaveAndReturn() {
    m_workspace.BeginAction();
    if (!Begin() || !Apply()) return {};
    const QString file = FileToSave();
    return !file.isEmpty() && SaveAs(file) ? file : QString();
}

void FieldCommands::SaveAndRecord() {
    const QString file = SaveAndReturn();
    // The message's own file is imported already.
    if (!file.isEmpty() && !IsSameFile(file, QFile::decodeName(m_message->File().c_str()))) m_imports.Open({file});
}

bool FieldCommands::SaveAs(const QString& file) {
    const QString source = QFile::decodeName(m_message->File().c_str());
    const bool is_source = IsSameFile(file, source);
    try {
        const files::Bytes& bytes = m_message->Bytes();
        WriteNewFile(file, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(Text(error.what()), tr("Choose another folder or free disk space, then save again."));
        return false;
    }
    m_message->Changes().setClean();
    if (!is_source) m_workspace.settings.setValue(kMessageFolderSetting, QFileInfo(file).absolutePath());
    m_workspace.status.ShowResult(tr("%1 saved").arg(file));
    if (is_source) m_imports.Open({source});
    return true;
}

void FieldCommands::FillFromTable() {
    m_workspace.BeginAction();
    if (!Begin() || !Apply()) return;
    const QString folder = m_workspace.settings.value(kTableSetting).toString();
    const QStringList files =
        PickFiles(&m_workspace.window, tr("Fill from a table"), folder, false,
                  {tr("Tables (*.csv *.tsv *.txt *.json)"), tr("All files") + QStringLiteral(" (*)")});
    if (files.isEmpty()) return;
    m_workspace.settings.setValue(kTableSetting, QFileInfo(files.front()).absolutePath());
    try {
        const RecordedForm form = m_message->Form();
        const QString source = QFile::decodeName(std::filesystem::path(form.file).parent_path().c_str());
        // Modal, since it calls the module.
        (new FillWindow(form, m_workspace.OptionsFor({source}), TitleOf(*Key()), files.front(), m_workspace.settings,
                        &m_workspace.window))
            ->open();
    } catch (const std::runtime_error& error) {
        m_workspace.notice.Warn(Text(error.what()),
                                tr("A table is a CSV file with a heading, or a JSON array of objects."));
    }
}

bool FieldCommands::MayLeave() {
    if (!HasChanges()) return true;
    const auto answer =
        RunBox(&m_workspace.window, QMessageBox::Question, tr("Changed message"),
               tr("Texts of %1 were changed. Save the changed message as a message file?").arg(TitleOf(*Key())),
               QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save) return Save();
    return answer == QMessageBox::Discard;
}

void FieldCommands::Leave() {
    if (!m_message) return;
    Close();
    m_message.reset();
    Q_EMIT stateChanged();
}

std::optional<library::RecordingKey> FieldCommands::Key() const {
    if (!m_message) return std::nullopt;
    return library::RecordingKey{m_message->Recording().disk, m_message->Recording().number};
}

const library::Recording& FieldCommands::Recording() const {
    return m_message->Recording();
}

}  // namespace zel::desktop
