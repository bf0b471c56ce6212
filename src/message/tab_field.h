#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

/// Pixels by which the module's x positions lie right of the file's.
inline constexpr int kXOffset = 7;
/// Records that a tab table can have.
inline constexpr int kMaxTabs = 200;
inline constexpr int kTabRecordSize = 26;
inline constexpr std::size_t kTabNameSize = 17;

/// Tab field as the host receives it, 30 bytes, packed.
struct [[gnu::packed]] tag_tab_field {
    std::uint16_t tab_start;      //  0  left end, the file's value + 7
    std::uint16_t tab_end;        //  2  right end, the file's value + 7
    std::uint16_t tab_top;        //  4  row_y of its row, corrected
    std::uint16_t tab_bottom;     //  6  tab_top + row_bottom of its row
    std::uint8_t tab_byte;        //  8
    char tab_name[kTabNameSize];  //  9  empty for an unnamed field; needn't be terminated
    std::uint32_t tab_bits;       // 26  tab_row:6, tab_a:4, tab_font:5, tab_colour:4, five flags, from bit 0

    int Row() const noexcept { return static_cast<int>(tab_bits & 0x3F); }
    int Font() const noexcept { return static_cast<int>(tab_bits >> 10 & 0x1F); }  ///< Slot; 16 and above name none.
    int ColourSet() const noexcept { return static_cast<int>(tab_bits >> 15 & 7); }
};
static_assert(sizeof(tag_tab_field) == 30 && std::is_trivially_copyable_v<tag_tab_field>);
static_assert(offsetof(tag_tab_field, tab_byte) == 8 && offsetof(tag_tab_field, tab_name) == 9 &&
              offsetof(tag_tab_field, tab_bits) == 26);

/// tab_bits of the record's bytes 22 to 24.
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

/// A record of the tab table as it stands in the file, before it is held against the rows; 26 bytes, missing ones zero.
/// The ends are the file's own values, tab_top and tab_bottom are 0, and the name "un-named" has become an empty one.
tag_tab_field ConvertTabRecord(std::span<const std::uint8_t> bytes) noexcept;
