#include "host/fontkit/sfnt_writer.h"

#include <bit>

namespace zel::fontkit {

namespace {

constexpr std::uint32_t kTrueTypeVersion = 0x00010000;
constexpr std::size_t kHeaderSize = 12, kRecordSize = 16;
/// Of checkSumAdjustment in the table head, and what the sum of the whole file is to be with it.
constexpr std::size_t kAdjustmentOffset = 8;
constexpr std::uint32_t kFileSum = 0xB1B0AFBA;

std::size_t Padded(std::size_t size) noexcept {
    return (size + 3) / 4 * 4;
}

/// The sum of the bytes as 32-bit words, the last one padded with zeros.
std::uint32_t SumOf(std::string_view bytes) noexcept {
    std::uint32_t sum = 0;
    for (std::size_t index = 0; index < bytes.size(); ++index)
        sum += std::uint32_t{static_cast<std::uint8_t>(bytes[index])} << (24 - index % 4 * 8);
    return sum;
}

}  // namespace

std::string SfntFile(const SfntTables& tables) {
    const auto count = static_cast<unsigned>(tables.size());
    const unsigned log = static_cast<unsigned>(std::bit_width(count)) - 1;
    const unsigned range = 16U << log;
    SfntTable directory;
    directory.U32(kTrueTypeVersion).U16(count).U16(range).U16(log).U16(count * 16 - range);
    std::size_t offset = kHeaderSize + count * kRecordSize, adjustment = 0;
    for (const auto& [tag, table] : tables) {
        if (tag == "head") adjustment = offset + kAdjustmentOffset;
        directory.Text(tag).U32(SumOf(table.Bytes())).U32(static_cast<std::uint32_t>(offset));
        directory.U32(static_cast<std::uint32_t>(table.Size()));
        offset += Padded(table.Size());
    }
    std::string file = directory.Bytes();
    file.reserve(offset);
    for (const auto& [tag, table] : tables) {
        file += table.Bytes();
        file.resize(Padded(file.size()));
    }
    const std::string sum = SfntTable().U32(kFileSum - SumOf(file)).Bytes();
    return file.replace(adjustment, sum.size(), sum);
}

}  // namespace zel::fontkit
