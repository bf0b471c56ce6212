#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace zel::host {

namespace crc32_detail {

/// Remainders of each byte under the polynomial 0xEDB88320, the reflected one of zlib and PNG.
constexpr std::array<std::uint32_t, 256> MakeTable() noexcept {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit) value = (value & 1) != 0 ? value >> 1 ^ 0xEDB88320U : value >> 1;
        table[byte] = value;
    }
    return table;
}
inline constexpr std::array<std::uint32_t, 256> kTable = MakeTable();

}  // namespace crc32_detail

/// The checksum of zlib and PNG. It is implemented here since a 32-bit build has no zlib.
constexpr std::uint32_t Crc32(std::span<const std::uint8_t> bytes) noexcept {
    std::uint32_t value = 0xFFFFFFFFU;
    for (const std::uint8_t byte : bytes) value = crc32_detail::kTable[(value ^ byte) & 0xFF] ^ value >> 8;
    return ~value;
}

}  // namespace zel::host
