#include "fill/data/data_record.h"

#include <string_view>

#include "fill/data/csv_records.h"
#include "fill/data/data_stream.h"
#include "fill/data/json_records.h"

namespace zel::fill {

namespace {

DataFormat FormatOf(std::string_view begin) {
    const std::size_t first = begin.find_first_not_of(" \t\r\n");
    const bool is_json = first != std::string_view::npos && (begin[first] == '[' || begin[first] == '{');
    return is_json ? DataFormat::kJson : DataFormat::kCsv;
}

}  // namespace

void ReadData(const ReadBytes& read, std::optional<DataFormat> format, const TakeRecord& take) {
    DataStream stream(read);
    // Empty lines, which the first bytes that arrive may be.
    while (!stream.Available().empty() &&
           std::string_view("\r\n").find(stream.Available().front()) != std::string_view::npos) {
        stream.Consume(1);
        stream.BeginRecord();
    }
    if (stream.Available().empty()) throw DataError("line 1: there are no data");
    if (format.value_or(FormatOf(stream.Available())) == DataFormat::kJson) {
        ReadJson(stream, take);
    } else {
        ReadCsv(stream, take);
    }
}

}  // namespace zel::fill
