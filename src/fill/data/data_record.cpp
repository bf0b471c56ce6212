#include "fill/data/data_record.h"

#include <string_view>

#include "fill/data/csv_records.h"
#include "fill/data/data_stream.h"
#include "fill/data/json_records.h"

namespace zel::fill {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// With its end.
std::string_view FirstLine(DataStream& stream) {
    const std::string_view bytes = stream.Available();
    const std::size_t end = bytes.find('\n');
    return bytes.substr(0, end == std::string_view::npos ? end : end + 1);
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(kBlanks) == std::string_view::npos;
}

DataFormat FormatOf(std::string_view line) {
    const char first = line[line.find_first_not_of(kBlanks)];
    return first == '[' || first == '{' ? DataFormat::kJson : DataFormat::kCsv;
}

}  // namespace

void ReadData(const ReadBytes& read, std::optional<DataFormat> format, const TakeRecord& take) {
    DataStream stream(read);
    // What is decided by the first bytes must not depend on how many of them arrive at once, beyond their first line.
    std::string_view line = FirstLine(stream);
    for (; IsBlank(line) && !line.empty(); line = FirstLine(stream)) {
        stream.Consume(line.size());
        stream.BeginRecord();
    }
    if (line.empty()) throw DataError("line 1: there are no data");
    if (format.value_or(FormatOf(line)) == DataFormat::kJson) {
        ReadJson(stream, take);
    } else {
        ReadCsv(stream, take);
    }
}

}  // namespace zel::fill
