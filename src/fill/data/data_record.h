#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

/// Records of values from a table, for filling fields.
namespace zel::fill {

enum class DataFormat {
    /// A heading and a line for each record, divided by the one of , ; and tab that the heading has most often.
    kCsv,
    /// An array of objects, or objects one after another.
    kJson,
};

/// A record of a table. Texts are valid UTF-8.
struct DataRecord {
    DataFormat format = DataFormat::kCsv;
    /// From 1.
    std::uint64_t number = 0;
    /// Where it begins, from 1.
    std::uint64_t line = 0;
    /// The names of its values. Records that follow each other share them if they are the same.
    std::shared_ptr<const std::vector<std::string>> columns;
    /// As many as there are columns; none for a JSON null.
    std::vector<std::optional<std::string>> values;
    /// Why the record can't be used; empty if it can. Its columns and values are incomplete then.
    std::vector<std::string> faults;
};

/// The data can't be read on; what() is one line with the number of the line and the reason.
class DataError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// @throws DataError with the line, from 1, and the reason.
[[noreturn]] inline void Fail(std::uint64_t line, const std::string& reason) {
    throw DataError("line " + std::to_string(line) + ": " + reason);
}

/// Reads the next bytes. @return their number, 0 at the end.
/// @throws an exception if the data can't be read, which passes through ReadData.
using ReadBytes = std::function<std::size_t(std::span<char> out)>;
/// Takes a record. @return false to stop reading.
using TakeRecord = std::function<bool(DataRecord record)>;

/// Limits of a record, against data that would fill the memory: in bytes, and of its columns.
inline constexpr std::size_t kMostRecordBytes = std::size_t{1} << 20;
inline constexpr std::size_t kMostColumns = 1000;

/// Reads records in constant memory.
/// @param format  empty: JSON if the data begin with [ or {, else CSV.
/// @throws DataError after the records before the damage have been taken.
void ReadData(const ReadBytes& read, std::optional<DataFormat> format, const TakeRecord& take);

}  // namespace zel::fill
