// Tables with texts: the same records, however the bytes arrive.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "fill/data/data_record.h"
#include "fuzz_target.h"

using namespace zel;

namespace {

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const base::Utf8Character c = base::FirstCharacter(text);
        if (!c.valid) return false;
        text.remove_prefix(c.size);
    }
    return true;
}

void CheckRecord(const fill::DataRecord& record, std::uint64_t number) {
    fuzz::Require(record.number == number, "records are counted");
    if (!record.faults.empty()) return;
    fuzz::Require(record.values.size() == record.columns->size(), "a value for each column");
    fuzz::Require(record.values.size() <= fill::kMostColumns, "no more columns than the limit");
    for (const auto& value : record.values) fuzz::Require(!value || IsUtf8(*value), "values are UTF-8");
    for (const auto& name : *record.columns) fuzz::Require(IsUtf8(name), "names are UTF-8");
}

/// Everything that is read, in one text.
std::string Read(fuzz::Input bytes, std::size_t piece) {
    std::string result;
    std::uint64_t count = 0;
    const fill::ReadBytes read = [&](std::span<char> out) {
        const std::size_t size = std::min({piece, out.size(), bytes.size()});
        if (size != 0) std::memcpy(out.data(), bytes.data(), size);
        bytes = bytes.subspan(size);
        return size;
    };
    try {
        fill::ReadData(read, std::nullopt, [&](const fill::DataRecord& record) {
            CheckRecord(record, ++count);
            result += std::to_string(record.line) + ' ';
            for (const auto& value : record.values) result += value.value_or("null") + '|';
            for (const auto& fault : record.faults) result += fault + '!';
            return true;
        });
    } catch (const fill::DataError& error) {
        result += error.what();
    }
    return result;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Require(Read({data, size}, size + 1) == Read({data, size}, 1), "the same in pieces");
    return 0;
}
