#include "fill/data/data_record.h"

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
    if (stream.Available().empty()) throw DataError("line 1: there are no data");
    if (format.value_or(FormatOf(stream.Available())) == DataFormat::kJson) {
        ReadJson(stream, take);
    } else {
        ReadCsv(stream, take);
    }
}

}  // namespace zel::fill
