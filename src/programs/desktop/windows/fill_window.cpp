#include "programs/desktop/windows/fill_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGridLayout>
#include <QHash>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QShortcut>
#include <QStandardPaths>
#include <QTableView>
#include <QTimer>
#include <algorithm>
#include <filesystem>

#include "base/text.h"
#include "programs/desktop/common/plain_text.h"
#include "programs/desktop/common/text.h"
#include "programs/desktop/models/picture_image.h"
#include "programs/desktop/models/record_table.h"
#include "programs/desktop/widgets/picture_view.h"
#include "programs/desktop/windows/box.h"
#include "programs/desktop/windows/pick.h"
#include "programs/desktop/work/record_file.h"

namespace zel::desktop {

namespace {

// Names of settings.
const QString kFolderSetting = QStringLiteral("fill/directory");
const QString kMessagesSetting = QStringLiteral("fill/messages");
const QString kPicturesSetting = QStringLiteral("fill/pictures");
const QString kOverflowSetting = QStringLiteral("fill/overflow");

/// The longest time that checking records may keep the window from answering.
constexpr int kCheck_ms = 15;

QLabel* PlainLabel(const char* name, QWidget* parent) {
    auto* const label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

bool IsSameFile(const QString& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(QFile::encodeName(a).toStdString(), b, error);
}

}  // namespace

FillWindow::FillWindow(const RecordedForm& form, const host::HostOptions& options, const QString& title,
                       const QString& table, QSettings& settings, QWidget* parent)
    : QDialog(parent),
      m_form(form),
      m_table_file(table),
      m_settings(settings),
      m_filler(form.form),
      m_preview(form.file, form.font_directory, options),
      m_task(new FillTask(m_filler, m_preview, this)),
      m_records(new RecordTable(this)),
      m_check_timer(new QTimer(this)) {
    setObjectName(QStringLiteral("fill_window"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Fill %1").arg(title));
    RecordFile file = ReadRecordFile(table);
    MakeControls();
    auto* const grid = new QGridLayout(this);
    constexpr int kTableShare = 2, kPictureShare = 3;
    grid->addLayout(MakeTableSide(), 0, 0);
    grid->addLayout(MakePictureSide(), 0, 1);
    grid->addLayout(MakeOutputs(), 1, 0, 1, 2);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(0, kTableShare);
    grid->setColumnStretch(1, kPictureShare);
    std::vector<RecordTable::Record> records;
    for (FileRecord& record : file.records) {
        m_file_faults.push_back(std::move(record.faults));
        records.push_back({std::move(record.number), std::move(record.values)});
    }
    m_records->Set(file.columns, std::move(records));
    m_names->addItem(tr("the number of the record"));
    for (const QString& column : file.columns) m_names->addItem(tr("column %1").arg(column));
    Connect();
    AddShortcuts();
    Match();
    constexpr int kMeasuredRows = 100;
    m_table->horizontalHeader()->setResizeContentsPrecision(kMeasuredRows);
    m_table->resizeColumnsToContents();
    constexpr int kWidestColumn = 180;
    for (int column = 1; column < m_records->columnCount(); ++column)
        m_table->setColumnWidth(column, std::min(m_table->columnWidth(column), kWidestColumn));
    if (m_records->rowCount() != 0) m_table->setCurrentIndex(m_records->index(0, m_records->columnCount() > 1 ? 1 : 0));
    ShowRecord();
    Enable();
    resize(1180, 720);
    m_table->setFocus();
}

FillWindow::~FillWindow() {
    // The list of changes is emptied later.
    m_records->Changes().disconnect(this);
}

void FillWindow::MakeControls() {
    m_summary = PlainLabel("fill_summary", this);
    m_columns = PlainLabel("fill_columns", this);
    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("fill_table"));
    m_table->setAccessibleName(tr("Records of the table"));
    m_table->setModel(m_records);
    m_table->setTabKeyNavigation(false);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    constexpr int kRowMargin = 8;
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + kRowMargin);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_picture = new PictureView(this);
    m_picture->setObjectName(QStringLiteral("fill_picture"));
    m_picture->setAccessibleName(tr("Picture of the record"));
    m_faults = PlainLabel("fill_faults", this);
    m_faults->setAccessibleName(tr("Faults of the record"));
    // The picture keeps its size from record to record.
    constexpr int kFaultLines = 3;
    m_faults->setMinimumHeight(kFaultLines * m_faults->fontMetrics().lineSpacing());
    m_faults->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_overflow = new QComboBox(this);
    m_overflow->setObjectName(QStringLiteral("fill_overflow"));
    m_overflow->addItems({tr("is a fault"), tr("is cut"), tr("is set closer")});
    m_overflow->setCurrentIndex(std::clamp(m_settings.value(kOverflowSetting).toInt(), 0, m_overflow->count() - 1));
    m_names = new QComboBox(this);
    m_names->setObjectName(QStringLiteral("fill_names"));
    // A long name must not make the window wider.
    m_names->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    constexpr int kNameWidth = 24;
    m_names->setMinimumContentsLength(kNameWidth);
    m_messages = new QCheckBox(tr("&Message files"), this);
    m_messages->setObjectName(QStringLiteral("fill_messages"));
    m_messages->setChecked(m_settings.value(kMessagesSetting, false).toBool());
    m_pictures = new QCheckBox(tr("&Pictures (PNG)"), this);
    m_pictures->setObjectName(QStringLiteral("fill_pictures"));
    m_pictures->setChecked(m_settings.value(kPicturesSetting, true).toBool());
    m_folder = new QLineEdit(this);
    m_folder->setObjectName(QStringLiteral("fill_folder"));
    m_folder->setText(
        m_settings.value(kFolderSetting, QStandardPaths::writableLocation(QStandardPaths::PicturesLocation))
            .toString());
    m_browse = new QPushButton(tr("&Browse…"), this);
    m_write = new QPushButton(this);
    m_write->setObjectName(QStringLiteral("fill_write"));
    m_undo = new QPushButton(tr("&Undo"), this);
    m_redo = new QPushButton(tr("&Redo"), this);
    m_previous = new QPushButton(tr("Pre&vious"), this);
    m_next = new QPushButton(tr("&Next"), this);
    m_next->setObjectName(QStringLiteral("fill_next"));
    m_next_fault = new QPushButton(tr("Next faul&t"), this);
    m_next_fault->setObjectName(QStringLiteral("fill_next_fault"));
    m_progress = new QProgressBar(this);
    m_progress->hide();
    m_result = PlainLabel("fill_result", this);
    // Enter in the table or a field must not press a button.
    for (QPushButton* const button : findChildren<QPushButton*>()) button->setAutoDefault(false);
}

QLayout* FillWindow::MakeTableSide() {
    auto* const side = new QVBoxLayout;
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(m_undo);
    buttons->addWidget(m_redo);
    buttons->addStretch();
    side->addWidget(m_summary);
    side->addWidget(m_columns);
    side->addWidget(m_table, 1);
    side->addLayout(buttons);
    return side;
}

QLayout* FillWindow::MakePictureSide() {
    auto* const side = new QVBoxLayout;
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* const button : {m_previous, m_next, m_next_fault}) buttons->addWidget(button);
    side->addWidget(m_picture, 1);
    side->addWidget(m_faults);
    side->addLayout(buttons);
    return side;
}

QLayout* FillWindow::MakeOutputs() {
    auto* const grid = new QGridLayout;
    const auto label = [&](const QString& text, QWidget* buddy, int row) {
        auto* const named = new QLabel(text, this);
        named->setBuddy(buddy);
        grid->addWidget(named, row, 0);
    };
    auto* const close = new QPushButton(tr("&Close"), this);
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &FillWindow::reject);
    label(tr("Too &long a text"), m_overflow, 0);
    grid->addWidget(m_overflow, 0, 1);
    label(tr("Files n&amed by"), m_names, 1);
    grid->addWidget(m_names, 1, 1);
    grid->addWidget(m_messages, 0, 2);
    grid->addWidget(m_pictures, 1, 2);
    label(tr("&Folder"), m_folder, 2);
    grid->addWidget(m_folder, 2, 1, 1, 2);
    grid->addWidget(m_browse, 2, 3);
    auto* const last = new QHBoxLayout;
    last->addWidget(m_result, 1);
    last->addWidget(m_progress);
    last->addWidget(m_write);
    last->addWidget(close);
    grid->addLayout(last, 3, 0, 1, 4);
    grid->setColumnStretch(2, 1);
    return grid;
}

void FillWindow::AddShortcuts() {
    const auto add = [this](const QKeySequence& keys, QPushButton* button) {
        button->setToolTip(keys.toString(QKeySequence::NativeText));
        connect(new QShortcut(keys, this), &QShortcut::activated, button, &QPushButton::click);
    };
    add(QKeySequence(tr("Ctrl+Z")), m_undo);
    add(QKeySequence(tr("Ctrl+Shift+Z")), m_redo);
    add(QKeySequence(tr("Ctrl+PgUp")), m_previous);
    add(QKeySequence(tr("Ctrl+PgDown")), m_next);
    add(QKeySequence(Qt::Key_F8), m_next_fault);
    add(QKeySequence(tr("Ctrl+Return")), m_write);
}

void FillWindow::Connect() {
    m_check_timer->setInterval(0);
    connect(m_check_timer, &QTimer::timeout, this, &FillWindow::CheckSome);
    connect(m_records, &RecordTable::recordChanged, this, &FillWindow::CheckChanged);
    connect(&m_records->Changes(), &QUndoStack::indexChanged, this, &FillWindow::Enable);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &FillWindow::ShowRecord);
    connect(m_overflow, &QComboBox::currentIndexChanged, this, [this] {
        CheckAll();
        ShowRecord();
    });
    connect(m_names, &QComboBox::currentIndexChanged, this, [this] {
        Match();
        ShowRecord();
    });
    for (QCheckBox* const box : {m_messages, m_pictures}) connect(box, &QCheckBox::toggled, this, &FillWindow::Enable);
    connect(m_folder, &QLineEdit::textChanged, this, &FillWindow::Enable);
    connect(m_browse, &QPushButton::clicked, this, &FillWindow::ChooseFolder);
    connect(m_undo, &QPushButton::clicked, &m_records->Changes(), &QUndoStack::undo);
    connect(m_redo, &QPushButton::clicked, &m_records->Changes(), &QUndoStack::redo);
    connect(m_previous, &QPushButton::clicked, this, [this] { Step(-1); });
    connect(m_next, &QPushButton::clicked, this, [this] { Step(1); });
    connect(m_next_fault, &QPushButton::clicked, this, &FillWindow::GoToFault);
    connect(m_write, &QPushButton::clicked, this, &FillWindow::Write);
    connect(m_task, &FillTask::progressed, this, [this](int done, int total) {
        m_progress->setRange(0, total);
        m_progress->setValue(done);
    });
    connect(m_task, &FillTask::finished, this, &FillWindow::ShowResult);
}

void FillWindow::Match() {
    const QStringList reasons = m_filler.Match(m_records->Columns(), m_names->currentIndex() - 1);
    m_records->SetUnused(reasons);
    QStringList unused;
    for (qsizetype column = 0; column < reasons.size(); ++column) {
        if (!reasons[column].isEmpty())
            unused.append(tr("Column %1 %2").arg(m_records->Columns()[column], reasons[column]));
    }
    const QStringList unfilled = m_filler.UnfilledFields();
    QStringList lines;
    if (!unused.isEmpty()) lines.append(FirstLines(unused));
    if (!unfilled.isEmpty()) lines.append(tr("Unchanged, without a column: %1").arg(FirstNames(unfilled)));
    m_columns->setText(lines.join(u'\n'));
    m_columns->setVisible(!lines.isEmpty());
    CheckAll();
}

void FillWindow::CheckAll() {
    FindSameNames();
    m_next_check = 0;
    m_check_timer->start();
    CheckSome();
}

void FillWindow::CheckSome() {
    QElapsedTimer elapsed;
    elapsed.start();
    while (m_next_check < m_records->rowCount() && elapsed.elapsed() < kCheck_ms) Check(m_next_check++);
    if (m_next_check == m_records->rowCount()) m_check_timer->stop();
    ShowSummary();
}

void FillWindow::Check(int row) {
    const auto at = static_cast<std::size_t>(row);
    QStringList faults = m_file_faults[at];
    // Values of a record that could not be read are incomplete.
    if (faults.isEmpty()) faults = m_filler.Fill(m_records->At(row).values, Overflow()).faults;
    faults.append(NameFaults(row));
    m_records->SetFaults(row, faults);
}

void FillWindow::CheckChanged(int row) {
    if (m_names->currentIndex() > 0) {
        CheckAll();
    } else {
        Check(row);
        ShowSummary();
    }
    if (row == CurrentRow()) ShowRecord();
    m_table->setCurrentIndex(m_records->index(row, std::max(m_table->currentIndex().column(), 0)));
}

/// Of the record's files; empty if the record has no usable one.
QString FillWindow::NameOf(int row) const {
    const RecordTable::Record& record = m_records->At(row);
    const int column = m_names->currentIndex() - 1;
    if (column < 0) return Text(base::FourDigits(record.number.toInt()));
    const QString name = FileNameFrom(record.values[column]);
    return name == QStringLiteral(".") || name == QStringLiteral("..") ? QString() : name;
}

void FillWindow::FindSameNames() {
    QHash<QString, int> rows;
    m_same_name.assign(static_cast<std::size_t>(m_records->rowCount()), -1);
    if (m_names->currentIndex() <= 0) return;
    for (int row = 0; row < m_records->rowCount(); ++row) {
        const QString file = NameOf(row).toCaseFolded();
        const auto found = rows.constFind(file);
        if (found != rows.constEnd()) {
            m_same_name[static_cast<std::size_t>(row)] = *found;
        } else {
            rows.insert(file, row);
        }
    }
}

QStringList FillWindow::NameFaults(int row) const {
    if (NameOf(row).isEmpty()) return {tr("it has no name for its files")};
    const int same = m_same_name[static_cast<std::size_t>(row)];
    if (same >= 0) return {tr("its files have the name of those of record %1").arg(m_records->At(same).number)};
    return {};
}

void FillWindow::ShowSummary() {
    const auto count = static_cast<std::size_t>(m_records->rowCount());
    QString text = QFileInfo(m_table_file).fileName() + QStringLiteral(": ") + Counted(count, "record", "records");
    if (m_check_timer->isActive()) {
        text += tr(", %1 checked").arg(m_next_check);
    } else if (m_records->FaultCount() != 0) {
        text += tr(", %1 with faults").arg(m_records->FaultCount());
    }
    m_summary->setText(text);
    m_next_fault->setEnabled(m_records->FaultCount() != 0);
}

int FillWindow::CurrentRow() const {
    return m_table->currentIndex().row();
}

fill::Overflow FillWindow::Overflow() const {
    constexpr fill::Overflow kChoices[] = {fill::Overflow::kError, fill::Overflow::kCut, fill::Overflow::kSqueeze};
    return kChoices[m_overflow->currentIndex()];
}

void FillWindow::ShowRecord() {
    const int row = CurrentRow();
    if (row < 0) {
        m_picture->Show({}, {}, tr("The table has no records."));
        return m_faults->clear();
    }
    Check(row);
    const TableFiller::Result filled = m_filler.Fill(m_records->At(row).values, Overflow());
    const MessagePreview::Result shown = m_preview.Import(filled.bytes);
    const bool has_picture = shown.arrived && shown.arrived->picture;
    m_picture->Show(has_picture ? ImageOf(*shown.arrived->picture) : QImage(), {}, Text(shown.failure));
    const QStringList& faults = m_records->Faults(row);
    QStringList lines;
    if (!faults.isEmpty()) lines.append(tr("Record %1 is not written:").arg(m_records->At(row).number));
    lines.append(faults);
    lines.append(filled.notes);
    m_faults->setText(lines.isEmpty() ? tr("Record %1 has no faults.").arg(m_records->At(row).number)
                                      : FirstLines(lines));
    ShowSummary();
    Enable();
}

void FillWindow::Step(int step) {
    const int row = CurrentRow() + step;
    if (row < 0 || row >= m_records->rowCount()) return;
    m_table->setCurrentIndex(m_records->index(row, std::max(m_table->currentIndex().column(), 0)));
}

void FillWindow::GoToFault() {
    const int count = m_records->rowCount();
    for (int step = 1; step <= count; ++step) {
        const int row = (CurrentRow() + step) % count;
        if (!m_records->Faults(row).isEmpty()) return Step(row - CurrentRow());
    }
}

void FillWindow::ChooseFolder() {
    const QString folder = PickFolder(this, tr("Folder for the filled messages"), m_folder->text());
    if (!folder.isEmpty()) m_folder->setText(folder);
}

FillOutputs FillWindow::Outputs() const {
    return {QDir(m_folder->text().trimmed()).absolutePath(), m_messages->isChecked(), m_pictures->isChecked()};
}

/// Refuses outputs that would replace the form, its fonts or the table, and asks before others are replaced.
bool FillWindow::MayReplace(const std::vector<FillItem>& items, const FillOutputs& outputs) {
    std::vector<std::string> inputs{m_form.file, QFile::encodeName(m_table_file).toStdString()};
    inputs.insert(inputs.end(), m_form.font_files.begin(), m_form.font_files.end());
    QStringList present;
    for (const FillItem& item : items) {
        QStringList files;
        if (outputs.messages) files.append(outputs.directory + u'/' + item.MessageFile());
        if (outputs.pictures) files.append(outputs.directory + u'/' + item.PictureFile());
        for (const QString& file : files) {
            if (!QFileInfo::exists(file)) continue;
            if (std::ranges::any_of(inputs, [&](const std::string& input) { return IsSameFile(file, input); })) {
                RunBox(this, QMessageBox::Warning, windowTitle(),
                       tr("%1 would be replaced, which is needed for the other records. Choose another folder or "
                          "other names. Nothing was written.")
                           .arg(file));
                return false;
            }
            present.append(QFileInfo(file).fileName());
        }
    }
    return present.isEmpty() || RunBox(this, QMessageBox::Question, windowTitle(),
                                       tr("Replace these files in %1?\n%2").arg(outputs.directory, FirstLines(present)),
                                       QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel) == QMessageBox::Yes;
}

void FillWindow::Write() {
    if (m_task->IsRunning()) return m_task->Cancel();
    while (m_check_timer->isActive()) CheckSome();
    std::vector<FillItem> items;
    const bool numbered = m_names->currentIndex() <= 0;
    for (int row = 0; row < m_records->rowCount(); ++row) {
        if (m_records->Faults(row).isEmpty()) items.push_back({NameOf(row), numbered, m_records->At(row).values});
    }
    const FillOutputs outputs = Outputs();
    m_result->clear();
    if (items.empty()) return m_result->setText(tr("Every record has faults; nothing was written."));
    if (!MayReplace(items, outputs)) return;
    m_settings.setValue(kFolderSetting, outputs.directory);
    m_settings.setValue(kMessagesSetting, outputs.messages);
    m_settings.setValue(kPicturesSetting, outputs.pictures);
    m_settings.setValue(kOverflowSetting, m_overflow->currentIndex());
    m_task->Start(std::move(items), Overflow(), outputs);
    Enable();
}

void FillWindow::ShowResult(const FillResult& result) {
    const auto number = [](int count) { return static_cast<std::size_t>(count); };
    QStringList lines{tr("%1 written, %2 in %3")
                          .arg(Counted(number(result.records), "record", "records"),
                               Counted(number(result.files), "file", "files"), Outputs().directory)};
    if (result.cancelled) lines.front() += tr("; stopped");
    if (m_records->FaultCount() != 0) {
        lines.append(tr("%1 not written because of faults; F8 shows them.")
                         .arg(Counted(number(m_records->FaultCount()), "record", "records")));
    }
    if (!result.failures.isEmpty()) lines.append(FirstLines(result.failures));
    m_result->setText(lines.join(u'\n'));
    if (!result.cancelled && result.failures.isEmpty()) m_records->Changes().setClean();
    Enable();
}

void FillWindow::Enable() {
    const bool running = m_task->IsRunning();
    for (QWidget* const control :
         std::initializer_list<QWidget*>{m_table, m_overflow, m_names, m_messages, m_pictures, m_folder, m_browse})
        control->setEnabled(!running);
    m_undo->setEnabled(!running && m_records->Changes().canUndo());
    m_redo->setEnabled(!running && m_records->Changes().canRedo());
    m_previous->setEnabled(!running && CurrentRow() > 0);
    m_next->setEnabled(!running && CurrentRow() + 1 < m_records->rowCount());
    m_progress->setVisible(running);
    m_write->setText(running ? tr("&Stop") : tr("&Write all"));
    m_write->setEnabled(running || ((m_messages->isChecked() || m_pictures->isChecked()) &&
                                    m_records->rowCount() != 0 && !m_folder->text().trimmed().isEmpty()));
}

/// Escape stops a fill; without one it closes the window.
void FillWindow::reject() {
    if (m_task->IsRunning()) return m_task->Cancel();
    if (!m_records->Changes().isClean() &&
        RunBox(this, QMessageBox::Question, windowTitle(),
               tr("Values were changed here, but not in %1. Forget these changes?").arg(m_table_file),
               QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Cancel) != QMessageBox::Discard)
        return;
    QDialog::reject();
}

}  // namespace zel::desktop
