#include "fill/data/json_records.h"

#include <algorithm>
#include <istream>
#include <utility>

#include <nlohmann/json.hpp>

#include "base/text.h"

namespace zel::fill {

namespace {

using Json = nlohmann::json;

/// Takes the parser's events, and makes a record of each object.
class JsonReader : public Json::json_sax_t {
  public:
    JsonReader(DataStream& stream, const TakeRecord& take) : m_stream(stream), m_take(take) {}

    /// Reads the next value of the stream. @return whether to go on.
    bool ReadValue(std::istream& in) {
        m_stream.BeginRecord();
        Json::sax_parse(in, this, nlohmann::detail::input_format_t::json, false);
        return !m_is_stopped;
    }

    bool null() override { return Value(std::nullopt); }
    bool boolean(bool /*value*/) override { return Odd("true or false"); }
    bool number_integer(number_integer_t value) override { return Value(std::to_string(value)); }
    bool number_unsigned(number_unsigned_t value) override { return Value(std::to_string(value)); }
    // As it is written.
    bool number_float(number_float_t /*value*/, const string_t& text) override { return Value(text); }
    bool string(string_t& value) override { return Value(std::move(value)); }
    bool binary(binary_t& /*value*/) override { return false; }
    bool start_object(std::size_t /*size*/) override;
    bool key(string_t& name) override;
    bool end_object() override;
    bool start_array(std::size_t /*size*/) override;
    bool end_array() override;
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/, const Json::exception& /*error*/) override;

  private:
    bool IsInRecord() const noexcept { return m_record.has_value(); }
    void Begin();
    bool End();
    bool Value(std::optional<std::string> value);
    bool Odd(const char* what);

    DataStream& m_stream;
    const TakeRecord& m_take;
    /// The array of all records has begun.
    bool m_has_array = false;
    /// Arrays and objects that are open within a record, or in place of one.
    std::size_t m_nested = 0;
    std::optional<DataRecord> m_record;
    std::vector<std::string> m_columns;
    std::shared_ptr<const std::vector<std::string>> m_last_columns;
    std::uint64_t m_count = 0;
    bool m_is_stopped = false;
};

void JsonReader::Begin() {
    m_stream.BeginRecord();
    m_record.emplace();
    m_record->format = DataFormat::kJson;
    m_record->number = ++m_count;
    m_record->line = m_stream.Line();
    m_columns.clear();
}

bool JsonReader::End() {
    DataRecord record = std::move(*m_record);
    m_record.reset();
    if (m_last_columns == nullptr || *m_last_columns != m_columns)
        m_last_columns = std::make_shared<const std::vector<std::string>>(m_columns);
    record.columns = m_last_columns;
    m_is_stopped = !m_take(std::move(record));
    m_stream.BeginRecord();
    return !m_is_stopped;
}

bool JsonReader::Value(std::optional<std::string> value) {
    if (m_nested > 0) return true;
    if (!IsInRecord()) return Odd("a value");
    m_record->values.push_back(std::move(value));
    return true;
}

// A value that is no text. In place of a record it makes one that can't be used.
bool JsonReader::Odd(const char* what) {
    if (m_nested > 0) return true;
    if (IsInRecord()) {
        m_record->faults.push_back("\"" + m_columns.back() + "\" is " + what + ", not a text");
        m_record->values.emplace_back();
        return true;
    }
    Begin();
    m_record->faults.push_back(std::string("is ") + what + ", not an object");
    return End();
}

bool JsonReader::start_object(std::size_t /*size*/) {
    if (m_nested == 0 && !IsInRecord()) {
        Begin();
        return true;
    }
    const bool goes_on = Odd("an object");
    ++m_nested;
    return goes_on;
}

bool JsonReader::key(string_t& name) {
    if (m_nested > 0) return true;
    if (m_columns.size() == kMostColumns)
        Fail(m_record->line, "the record has more than " + base::GroupedDigits(kMostColumns) + " values");
    if (std::ranges::find(m_columns, name) != m_columns.end())
        m_record->faults.push_back("\"" + name + "\" is there twice");
    m_columns.push_back(std::move(name));
    return true;
}

bool JsonReader::end_object() {
    if (m_nested == 0) return End();
    --m_nested;
    return true;
}

bool JsonReader::start_array(std::size_t /*size*/) {
    if (m_nested == 0 && !IsInRecord() && !std::exchange(m_has_array, true)) return true;
    const bool goes_on = Odd("an array");
    ++m_nested;
    return goes_on;
}

bool JsonReader::end_array() {
    if (m_nested > 0) {
        --m_nested;
    } else {
        m_has_array = false;
    }
    return true;
}

bool JsonReader::parse_error(std::size_t /*position*/, const std::string& /*token*/, const Json::exception& /*error*/) {
    if (m_stream.IsTooLong())
        Fail(m_record ? m_record->line : m_stream.Line(),
             "the record is longer than " + base::GroupedDigits(kMostRecordBytes) + " bytes");
    Fail(m_stream.Line(), m_stream.Available().empty() ? "the JSON text ends early" : "the text is no valid JSON");
}

}  // namespace

void ReadJson(DataStream& stream, const TakeRecord& take) {
    std::istream in(&stream);
    JsonReader reader(stream, take);
    for (;;) {
        while (!stream.Available().empty() &&
               std::string_view(" \t\r\n").find(stream.Available().front()) != std::string_view::npos)
            stream.Consume(1);
        stream.BeginRecord();
        if (stream.Available().empty() || !reader.ReadValue(in)) return;
    }
}

}  // namespace zel::fill
