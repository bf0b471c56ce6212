#include "fill/data/csv_records.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

#include <csv.h>

#include "base/text.h"
#include "fill/data/utf8_check.h"

namespace zel::fill {

namespace {

constexpr std::string_view kDelimiters = ",;\t";

/// The delimiter that a heading has most often outside of quotes; without any, the comma.
char DelimiterOf(std::string_view begin) {
    std::size_t counts[kDelimiters.size()] = {};
    bool is_quoted = false;
    for (const char c : begin) {
        if (c == '"') is_quoted = !is_quoted;
        if (is_quoted) continue;
        if (c == '\n' || c == '\r') break;
        if (const std::size_t n = kDelimiters.find(c); n != std::string_view::npos) ++counts[n];
    }
    return kDelimiters[static_cast<std::size_t>(std::ranges::max_element(counts) - counts)];
}

/// The delimiter of a line "sep=;", which is passed over.
std::optional<char> NamedDelimiter(DataStream& stream) {
    constexpr std::string_view kBegin = "sep=";
    const std::string_view line = stream.Available();
    const std::size_t end = line.find('\n');
    if (!line.starts_with(kBegin) || end == std::string_view::npos) return std::nullopt;
    const char delimiter = line[kBegin.size()];
    const std::string_view rest = line.substr(kBegin.size() + 1, end - std::min(end, kBegin.size() + 1));
    if (kDelimiters.find(delimiter) == std::string_view::npos || !(rest.empty() || rest == "\r")) return std::nullopt;
    stream.Consume(end + 1);
    return delimiter;
}

/// One pass of the parser, which calls back for each value and each record's end.
class CsvReader {
  public:
    CsvReader(DataStream& stream, const TakeRecord& take) : m_stream(stream), m_take(take) {
        // Strict: a quote within a value that isn't quoted, or one that is never closed, is an error.
        if (csv_init(&m_parser, CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
        // Blanks around a value belong to it.
        csv_set_space_func(&m_parser, [](unsigned char) { return 0; });
        constexpr std::size_t kGrowth = 4096;
        csv_set_blk_size(&m_parser, kGrowth);
    }
    ~CsvReader() { csv_free(&m_parser); }
    CsvReader(const CsvReader&) = delete;
    CsvReader& operator=(const CsvReader&) = delete;

    void Read();

  private:
    template <class Step>
    void Guard(Step step) noexcept {
        try {
            if (!m_failure) step();
        } catch (...) {
            m_failure = std::current_exception();
        }
    }
    static void OnValue(void* value, std::size_t size, void* reader) {
        auto& self = *static_cast<CsvReader*>(reader);
        self.Guard([&] { self.AddValue({static_cast<const char*>(value), size}); });
    }
    static void OnRecord(int /*end*/, void* reader) {
        auto& self = *static_cast<CsvReader*>(reader);
        self.Guard([&] { self.EndRecord(); });
    }

    void Feed(std::string_view bytes);
    void AddValue(std::string_view value);
    void EndRecord();
    void TakeHeading();

    DataStream& m_stream;
    const TakeRecord& m_take;
    csv_parser m_parser{};
    std::exception_ptr m_failure;
    /// Of the record that is being read.
    std::uint64_t m_line = 1;
    bool m_is_open = false, m_is_stopped = false;
    std::vector<std::string> m_values;
    std::shared_ptr<const std::vector<std::string>> m_columns;
    std::uint64_t m_count = 0;
};

void CsvReader::AddValue(std::string_view value) {
    if (m_values.size() == kMostColumns) Fail(m_line, "has more than " + base::GroupedDigits(kMostColumns) + " values");
    m_values.emplace_back(value);
}

void CsvReader::TakeHeading() {
    for (const std::string& name : m_values) {
        if (!IsUtf8(name)) Fail(m_line, "the heading isn't UTF-8; save the table as UTF-8");
    }
    m_columns = std::make_shared<const std::vector<std::string>>(std::exchange(m_values, {}));
}

void CsvReader::EndRecord() {
    m_is_open = false;
    if (m_is_stopped) return;
    if (m_columns == nullptr) return TakeHeading();
    DataRecord record;
    record.number = ++m_count;
    record.line = m_line;
    record.columns = m_columns;
    if (m_values.size() != m_columns->size()) {
        record.faults.push_back("has " + base::Counted(m_values.size(), "value") + ", and the heading has " +
                                base::Counted(m_columns->size(), "column"));
    }
    for (std::string& value : m_values) {
        if (!IsUtf8(value)) record.faults.push_back("isn't UTF-8; save the table as UTF-8");
        if (!record.faults.empty()) break;
        record.values.emplace_back(std::move(value));
    }
    m_values.clear();
    m_is_stopped = !m_take(std::move(record));
}

void CsvReader::Feed(std::string_view bytes) {
    const bool is_blank = bytes.find_first_not_of("\r\n") == std::string_view::npos;
    if (!m_is_open) {
        m_line = m_stream.Line();
        m_stream.BeginRecord();
    }
    m_is_open = m_is_open || !is_blank;
    const std::size_t parsed = csv_parse(&m_parser, bytes.data(), bytes.size(), OnValue, OnRecord, this);
    if (m_failure) std::rethrow_exception(m_failure);
    if (parsed == bytes.size()) return;
    if (csv_error(&m_parser) == CSV_ENOMEM) throw std::bad_alloc();
    Fail(m_line, "a quote within a value isn't doubled, or its value isn't quoted");
}

// A line at a time, so that each record's line is known.
void CsvReader::Read() {
    const std::optional<char> named = NamedDelimiter(m_stream);
    csv_set_delim(&m_parser, static_cast<unsigned char>(named.value_or(DelimiterOf(m_stream.Available()))));
    while (!m_is_stopped) {
        const std::string_view bytes = m_stream.Available();
        if (bytes.empty()) break;
        const std::size_t end = bytes.find('\n');
        const std::string_view line = bytes.substr(0, end == std::string_view::npos ? end : end + 1);
        Feed(line);
        m_stream.Consume(line.size());
        if (m_is_open && m_stream.IsTooLong())
            Fail(m_line, "is longer than " + base::GroupedDigits(kMostRecordBytes) + " bytes; a quote may be missing");
    }
    if (m_is_stopped) return;
    if (csv_fini(&m_parser, OnValue, OnRecord, this) != 0) Fail(m_line, "a quoted value has no end");
    if (m_failure) std::rethrow_exception(m_failure);
}

}  // namespace

void ReadCsv(DataStream& stream, const TakeRecord& take) {
    CsvReader(stream, take).Read();
}

}  // namespace zel::fill
