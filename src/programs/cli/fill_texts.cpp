#include "programs/cli/fill_texts.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/csv_text.h"
#include "base/text.h"
#include "base/utf8.h"
#include "files/message_writer.h"
#include "host/native_path.h"
#include "host/recorder/disk_names.h"
#include "host/run/batch_run.h"
#include "module/contract/message_id.h"
#include "programs/cli/command.h"
#include "programs/cli/diagnostics.h"

namespace zel::cli {

namespace {

/// The name under which the messages are recorded unless another one was chosen.
std::string UsualDisk(const FillArguments& arguments) {
    const std::filesystem::path path(host::AbsolutePath(arguments.request.message));
    std::error_code error;
    return recorder::UsualDiskName(std::filesystem::is_directory(path, error) ? path : path.parent_path());
}

/// Columns without which a table is none of texts, and those that tell its messages and rows apart.
constexpr const char* kColumns[] = {"disk", "message", "row", "field", "text"};

/// Lines of a message; more than its 200 fields and the texts of a full page have.
constexpr std::size_t kMostLines = 100000;

run::BatchRequest DiskOf(const FillArguments& arguments) {
    run::BatchRequest request;
    request.disk = arguments.request.message;
    request.fonts = arguments.request.fonts;
    return request;
}

/// The value of a column; empty without one. In CSV a text may be guarded against being taken for a formula.
std::string ValueOf(const fill::DataRecord& record, std::string_view column) {
    const auto found = std::ranges::find(*record.columns, column);
    const auto index = static_cast<std::size_t>(found - record.columns->begin());
    std::string value = index < record.values.size() ? record.values[index].value_or("") : std::string();
    return record.format == fill::DataFormat::kCsv ? std::string(base::WithoutFormulaGuard(value)) : value;
}

std::string WithoutBlanks(std::string text) {
    std::erase(text, ' ');
    return text;
}

std::string WithoutLastBlanks(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

/// The characters of a row that are in no field, without blanks, as UTF-8.
std::string FreeText(const files::RowText& row, unsigned index, const std::vector<fill::Field>& fields) {
    if (row.row_empty) return {};
    std::string text;
    const std::optional<std::vector<unsigned>> chain = fill::ChainOf(row);
    for (unsigned n = 0; n < row.cells.size(); ++n) {
        const files::CharCell& cell = row.cells[chain ? (*chain)[n] : n];
        const auto contains = [&](const fill::Field& field) { return field.row == index && field.Contains(cell); };
        if (std::ranges::none_of(fields, contains)) text += static_cast<char>(cell.char_code & 0xFF);
    }
    return WithoutBlanks(base::Utf8FromLatin1(text));
}

bool HasUnknownFont(const fill::Form& form, const files::CharCell& cell) {
    return cell.char_font >= kFontSlots || !form.fonts[cell.char_font];
}

/// A copy of a message without the characters that an import doesn't pass on, since their font wasn't found.
files::MessageFile WithoutUnknownFonts(const fill::Form& form) {
    files::MessageFile message = form.message;
    for (files::RowText& row : message.rows) {
        // The characters that follow one in reading order aren't passed on either.
        const std::optional<std::vector<unsigned>> chain = fill::ChainOf(row);
        if (!chain) continue;
        std::vector<files::CharCell> cells;
        for (const unsigned at : *chain) {
            if (row.cells[at].char_font >= kFontSlots) continue;
            if (HasUnknownFont(form, row.cells[at])) break;
            cells.push_back(row.cells[at]);
        }
        row.cells = std::move(cells);
        files::ChainInOrder(row);
    }
    return message;
}

/// Whether a table has the text of a field as the message has it.
bool IsPresent(const files::MessageFile& message, const fill::Field& field, const std::string& text) {
    const auto is_text = [&](fill::Gaps gaps) {
        return WithoutLastBlanks(fill::PresentText(message, field, gaps)) == WithoutLastBlanks(text);
    };
    return is_text(fill::Gaps::kAsBlanks) || is_text(fill::Gaps::kIgnored);
}

}  // namespace

bool FillTexts::IsTable(const std::vector<std::string>& columns) {
    return std::ranges::all_of(kColumns,
                               [&](const char* name) { return std::ranges::find(columns, name) != columns.end(); });
}

std::vector<std::string> FillTexts::DirectoriesOf(const FillArguments& arguments) {
    const run::BatchRequest request = DiskOf(arguments);
    return {run::MessageDirectoryOf(request.disk), run::FontDirectoryOf(request)};
}

FillTexts::FillTexts(const FillArguments& arguments, FillOutputs& outputs, FillReport& report)
    : m_arguments(arguments),
      m_outputs(outputs),
      m_report(report),
      m_disk(arguments.disk.value_or(UsualDisk(arguments))) {}

void FillTexts::Take(const fill::DataRecord& record) {
    if (!record.faults.empty()) {
        for (const std::string& fault : record.faults)
            m_report.AddFault("line " + std::to_string(record.line) + ": " + fault);
        return;
    }
    Message begin{ValueOf(record, "disk"), ValueOf(record, "message"), {}};
    if (!m_message || m_message->disk != begin.disk || m_message->number != begin.number) {
        SetTexts();
        m_message = std::move(begin);
    }
    if (m_message->lines.size() == kMostLines)
        throw fill::DataError("line " + std::to_string(record.line) + ": the message has too many lines");
    m_message->lines.push_back({record.line, ValueOf(record, "row"), ValueOf(record, "field"), ValueOf(record, "name"),
                                ValueOf(record, "text")});
}

void FillTexts::Finish() {
    SetTexts();
    if (m_other_disks != 0) {
        m_report.AddFault(base::Counted(m_other_disks, "message") + " of other disks than \"" + m_disk +
                          "\" passed over; --disk names the disk in the table");
    }
    if (m_other_messages != 0)
        PrintNote(base::Counted(m_other_messages, "other message") + " of the table passed over");
}

// Whether a message of the table is one that is filled.
bool FillTexts::IsSelected(const Message& message) {
    if (m_disk != message.disk) {
        ++m_other_disks;
        return false;
    }
    std::error_code error;
    if (std::filesystem::is_directory(m_arguments.request.message, error)) return true;
    const std::string own = std::filesystem::path(m_arguments.request.message).filename().string();
    if (MessageNumberOf(WithoutLeadingDot(own)) == MessageNumberOf(WithoutLeadingDot(message.number))) return true;
    ++m_other_messages;
    return false;
}

void FillTexts::SetTexts() {
    if (!m_message) return;
    FilledMessage filled;
    FillResult& result = filled.result;
    result.line = m_message->lines.front().number;
    result.where = "message " + m_message->number + " (line " + std::to_string(result.line) + ")";
    const std::string_view digits = WithoutLeadingDot(m_message->number);
    filled.number = MessageNumberOf(digits);
    if (digits.empty() || CountDigits(digits) != digits.size() || filled.number > kLargestMessageNumber) {
        result.faults.push_back({{}, "\"" + m_message->number + "\" is no number of a message"});
        return m_outputs.Report(std::move(result));
    }
    if (!IsSelected(*m_message)) return;
    if (!m_done.insert(std::to_string(filled.number)).second) {
        result.faults.push_back({{}, "the lines of the message don't follow each other; sort the table by message"});
        return m_outputs.Report(std::move(result));
    }
    run::ImportRequest request = m_arguments.request;
    std::error_code error;
    if (std::filesystem::is_directory(request.message, error)) {
        const std::vector<std::string> directories = DirectoriesOf(m_arguments);
        request.message = directories.front() + "/" + base::NumberedName(filled.number);
        request.fonts = directories.back();
    }
    try {
        SetTexts(request, filled);
    } catch (const CommandError& failure) {
        filled.result.faults.push_back({{}, failure.what()});
        m_outputs.Report(std::move(filled.result));
    }
}

// The fonts are searched only for a message that changes.
void FillTexts::SetTexts(const run::ImportRequest& request, FilledMessage& filled) {
    FillResult& result = filled.result;
    const std::string file = MessageFileOf(request);
    fill::Form form = fill::MakeForm(ReadFormFile(file), {});
    std::vector<fill::FieldValue> changes = ChangesOf(form.message, form.fields, result);
    CheckRows(form.message, form.fields, result);
    if (changes.empty() && result.faults.empty()) return m_report.AddUnchanged();

    // Some may be differences between the file and what an import passes on.
    const OpenedForm opened = OpenForm(request);
    const files::MessageFile imported = WithoutUnknownFonts(opened.form);
    result.faults.clear();
    std::erase_if(changes, [&](const fill::FieldValue& value) {
        return IsPresent(imported, opened.form.fields[value.field], value.text);
    });
    FillResult ignored;
    ChangesOf(opened.form.message, opened.form.fields, result);
    CheckRows(opened.form.message, opened.form.fields, ignored);
    if (!ignored.faults.empty()) CheckRows(imported, opened.form.fields, result);
    const fill::Filled texts = fill::FillFields(opened.form, changes, m_arguments.overflow);
    const auto add = [&](const std::vector<fill::FieldNote>& from, std::vector<FillRemark>& to) {
        for (const fill::FieldNote& note : from) to.push_back({opened.form.fields[note.field].address, note.text});
    };
    add(texts.faults, result.faults);
    if (!result.faults.empty()) return m_outputs.Report(std::move(result));
    if (changes.empty()) return m_report.AddUnchanged();
    add(texts.notes, result.notes);
    filled.file_name = std::filesystem::path(file).filename().string();
    result.name = WithoutLeadingDot(filled.file_name);
    filled.bytes = files::WriteMessage(texts.message);
    m_outputs.SetKnownWarnings(opened.warnings);
    m_outputs.Give(std::move(filled));
}

std::vector<fill::FieldValue> FillTexts::ChangesOf(const files::MessageFile& message,
                                                   const std::vector<fill::Field>& fields, FillResult& result) const {
    std::vector<fill::FieldValue> changes;
    for (const Line& line : m_message->lines) {
        if (line.field.empty()) continue;
        const auto fault = [&](const std::string& text) {
            result.faults.push_back({line.field, "line " + std::to_string(line.number) + ": " + text});
        };
        const std::optional<std::size_t> index = fill::FieldNumber(line.field);
        if (!index || *index >= fields.size()) {
            fault("the message has no such field");
        } else if (const fill::Field& field = fields[*index]; field.name != line.name) {
            fault("its name is \"" + field.name + "\" in the message and \"" + line.name + "\" in the table");
        } else if (IsPresent(message, field, line.text)) {
            continue;
        } else if (std::ranges::find(changes, *index, &fill::FieldValue::field) != changes.end()) {
            fault("the table has another text for this field");
        } else {
            changes.push_back({*index, line.text});
        }
    }
    return changes;
}

// Texts of a row that are in no field can't be changed.
void FillTexts::CheckRows(const files::MessageFile& message, const std::vector<fill::Field>& fields,
                          FillResult& result) const {
    const auto& lines = m_message->lines;
    for (std::size_t n = 0; n < lines.size();) {
        const Line& first = lines[n];
        std::string text;
        bool is_free = false;
        for (; n < lines.size() && lines[n].row == first.row; ++n) {
            if (!lines[n].field.empty()) continue;
            is_free = true;
            text += lines[n].text;
        }
        if (!is_free) continue;
        const auto row = static_cast<std::size_t>(MessageNumberOf(first.row));
        const bool is_row =
            !first.row.empty() && CountDigits(first.row) == first.row.size() && row < message.rows.size();
        const std::string line = "line " + std::to_string(first.number) + ": ";
        if (!is_row) {
            result.faults.push_back({{}, line + "the message has no row \"" + first.row + "\""});
        } else if (WithoutBlanks(text) != FreeText(message.rows[row], static_cast<unsigned>(row), fields)) {
            result.faults.push_back(
                {{}, line + "row " + first.row + " has another text, which is no field's and can't be changed"});
        }
    }
}

}  // namespace zel::cli
