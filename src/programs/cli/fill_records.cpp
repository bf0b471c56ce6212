#include "programs/cli/fill_records.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "base/text.h"
#include "files/message_writer.h"
#include "programs/cli/command.h"

namespace zel::cli {

namespace {

/// Unknown columns that are reported.
constexpr std::size_t kMostUnknown = 20;

std::string Listed(const std::vector<fill::Field>& fields) {
    if (fields.empty()) return "the message has no field";
    std::string text = "the fields are ";
    for (const fill::Field& field : fields) text += (&field == fields.data() ? "" : ", ") + field.address;
    return text;
}

/// Divides FIELD=TEXT. A field's name may contain the sign.
fill::FieldValue ConstantOf(const std::string& text, const fill::Form& form) {
    for (std::size_t at = text.find('='); at != std::string::npos; at = text.find('=', at + 1)) {
        if (const auto field = fill::FindField(form, text.substr(0, at))) return {*field, text.substr(at + 1)};
    }
    throw CommandError("--field " + text + ": names no field; " + Listed(form.fields));
}

bool IsSameName(std::string_view a, std::string_view b) {
    return a == b || fill::FoldedName(a) == fill::FoldedName(b);
}

}  // namespace

FillRecords::FillRecords(const FillArguments& arguments, const OpenedForm& form, FillOutputs& outputs,
                         FillReport& report)
    : m_arguments(arguments), m_form(form), m_outputs(outputs), m_report(report) {
    for (const std::string& text : arguments.texts) {
        fill::FieldValue value = ConstantOf(text, form.form);
        if (std::ranges::find(m_constants, value.field, &fill::FieldValue::field) != m_constants.end())
            throw CommandError("--field " + text + ": the field has a text already");
        m_constants.push_back(std::move(value));
    }
}

// Columns that name the same field leave open which of their texts is meant.
void FillRecords::UseColumns(const fill::DataRecord& record) {
    m_names = record.columns;
    m_columns.clear();
    for (const std::string& name : *m_names) {
        Column column;
        column.is_name = m_arguments.name_column && IsSameName(name, *m_arguments.name_column);
        column.field = fill::FindField(m_form.form, name);
        if (!column.field && !column.is_name) ReportUnknown(record, name);
        m_columns.push_back(column);
    }
    // Every record of a table with a heading would have the same fault.
    if (const std::string fault = FaultOfColumns(); record.format == fill::DataFormat::kCsv && !fault.empty())
        throw CommandError(*m_arguments.data + ": " + fault);
}

std::string FillRecords::FaultOfColumns() const {
    if (m_arguments.name_column && std::ranges::find(m_columns, true, &Column::is_name) == m_columns.end())
        return "there is no column \"" + *m_arguments.name_column + "\"";
    const auto is_field = [](const Column& column) { return column.field.has_value(); };
    if (m_constants.empty() && std::ranges::none_of(m_columns, is_field))
        return "none of its columns matches a field; " + Listed(m_form.form.fields);
    return {};
}

void FillRecords::ReportUnknown(const fill::DataRecord& record, std::string_view column) {
    if (m_unknown.size() > kMostUnknown || !m_unknown.emplace(column).second) return;
    const std::string where = "record " + std::to_string(record.number) + ": ";
    if (m_unknown.size() > kMostUnknown)
        return m_report.AddFault(where + "more columns match no field; they are not listed");
    m_report.AddFault("column \"" + std::string(column) + "\" matches no field; " + Listed(m_form.form.fields));
}

std::vector<fill::FieldValue> FillRecords::ValuesOf(const fill::DataRecord& record, FillResult& result) const {
    std::vector<fill::FieldValue> values = m_constants;
    for (std::size_t n = 0; n < record.values.size(); ++n) {
        const auto field = m_columns[n].field;
        if (!field || !record.values[n]) continue;
        if (std::ranges::find(values, *field, &fill::FieldValue::field) != values.end()) {
            result.faults.push_back({m_form.form.fields[*field].address,
                                     "column \"" + (*m_names)[n] + "\" is the second text for this field"});
        } else {
            values.push_back({*field, *record.values[n]});
        }
    }
    return values;
}

std::string FillRecords::NameOf(const fill::DataRecord& record, FillResult& result) {
    if (!m_arguments.name_column) return base::FourDigits(static_cast<int>(record.number));
    const auto column = std::ranges::find(m_columns, true, &Column::is_name);
    const auto index = static_cast<std::size_t>(column - m_columns.begin());
    if (!record.values[index]) {
        result.faults.push_back({{}, "has no value in the column \"" + *m_arguments.name_column + "\""});
        return {};
    }
    const std::string& name = *record.values[index];
    std::string error = OutputNameError(m_arguments, name);
    if (error.empty() && !m_used_names.insert(std::hash<std::string>()(fill::FoldedName(name))).second)
        error = "another record has the name \"" + name + "\"";
    if (!error.empty()) result.faults.push_back({{}, std::move(error)});
    return name;
}

void FillRecords::Take(const fill::DataRecord& record) {
    FilledMessage message;
    FillResult& result = message.result;
    result.record = record.number;
    result.line = record.line;
    result.where = "record " + std::to_string(record.number) + " (line " + std::to_string(record.line) + ")";
    for (const std::string& fault : record.faults) result.faults.push_back({{}, fault});
    if (!result.faults.empty()) return m_outputs.Report(std::move(result));
    if (m_names != record.columns) UseColumns(record);
    if (std::string fault = FaultOfColumns(); !fault.empty()) {
        result.faults.push_back({{}, std::move(fault)});
        return m_outputs.Report(std::move(result));
    }
    std::vector<fill::FieldValue> values = ValuesOf(record, result);
    result.name = NameOf(record, result);
    message.number = static_cast<int>(record.number);
    message.file_name = m_arguments.name_column ? result.name : "." + result.name;
    Fill(std::move(values), std::move(message));
}

std::optional<files::Bytes> FillRecords::FillOnce(const std::string& name, const std::string& file_name) {
    FilledMessage message;
    message.result.name = name;
    message.number = 1;
    message.file_name = file_name;
    return Fill(m_constants, std::move(message));
}

// The texts are tried even if the record has other faults, so that all of them are reported.
std::optional<files::Bytes> FillRecords::Fill(std::vector<fill::FieldValue> values, FilledMessage message) {
    const fill::Filled filled = fill::FillFields(m_form.form, values, m_arguments.overflow);
    const auto add = [&](const std::vector<fill::FieldNote>& from, std::vector<FillRemark>& to) {
        for (const fill::FieldNote& note : from) to.push_back({m_form.form.fields[note.field].address, note.text});
    };
    add(filled.faults, message.result.faults);
    if (!message.result.faults.empty()) {
        m_outputs.Report(std::move(message.result));
        return std::nullopt;
    }
    add(filled.notes, message.result.notes);
    files::Bytes bytes = files::WriteMessage(filled.message);
    message.bytes = bytes;
    m_outputs.Give(std::move(message));
    return bytes;
}

}  // namespace zel::cli
