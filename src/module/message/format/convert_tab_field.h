#pragma once

#include <cstdint>
#include <span>

#include "module/contract/records/tab_field.h"

namespace zel::message {

/// Maximum number of records in a tab table.
inline constexpr int kMaxTabs = 200;
/// Size of a record in the file, in bytes.
inline constexpr int kTabRecordSize = 26;

/// tab_bits in memory form, from bytes 22 to 24 of the record.
constexpr std::uint32_t RepackTabBits(std::uint8_t b22, std::uint8_t b23, std::uint8_t b24) noexcept {
    const std::uint32_t file = static_cast<std::uint32_t>(b22) << 16 | static_cast<std::uint32_t>(b23) << 8 | b24;
    const std::uint32_t row = file >> 18 & 0x3F, a = file >> 14 & 0xF, font = file >> 9 & 0x1F,
                        colour = file >> 5 & 0xF;
    const std::uint32_t flags =
        (file >> 4 & 1) | (file >> 3 & 1) << 1 | (file >> 2 & 1) << 2 | (file >> 1 & 1) << 3 | (file & 1) << 4;
    return row | a << 6 | font << 10 | colour << 15 | flags << 19;
}
static_assert(RepackTabBits(0xFC, 0, 0) == 0x3F && RepackTabBits(0x03, 0xC0, 0) == 0x3C0 &&
              RepackTabBits(0, 0x3E, 0) == 0x7C00);
static_assert(RepackTabBits(0, 0x01, 0xE0) == 0x78000 && RepackTabBits(0, 0, 0x10) == 1U << 19 &&
              RepackTabBits(0, 0, 1) == 1U << 23);

/// Converts a record of the tab table, before it is checked against the rows: the ends are the values of the file,
/// tab_top and tab_bottom are 0. The name "un-named" becomes empty.
/// @param bytes  the record; missing ones of its kTabRecordSize bytes read as zeros.
tag_tab_field ConvertTabRecord(std::span<const std::uint8_t> bytes) noexcept;

}  // namespace zel::message
