#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace zel {

/// Pixels by which the module's x positions are larger than the file's.
inline constexpr int kXOffset = 7;
inline constexpr std::size_t kTabNameSize = 17;

}  // namespace zel

/// Tab field as the host receives it, 30 bytes, packed.
struct [[gnu::packed]] tag_tab_field {
    std::uint16_t tab_start;           //  0  left end, the file's value + 7
    std::uint16_t tab_end;             //  2  right end, the file's value + 7
    std::uint16_t tab_top;             //  4  row_y of its row, corrected
    std::uint16_t tab_bottom;          //  6  tab_top + row_bottom of its row
    std::uint8_t tab_byte;             //  8
    char tab_name[zel::kTabNameSize];  //  9  empty for an unnamed field; needn't be terminated
    std::uint32_t tab_bits;            // 26  tab_row:6, tab_a:4, tab_font:5, tab_colour:4, five flags, from bit 0

    int Row() const noexcept { return static_cast<int>(tab_bits & 0x3F); }
    /// Slot; 16 and above name none.
    int Font() const noexcept { return static_cast<int>(tab_bits >> 10 & 0x1F); }
    int ColourSet() const noexcept { return static_cast<int>(tab_bits >> 15 & 7); }
};
static_assert(sizeof(tag_tab_field) == 30 && std::is_trivially_copyable_v<tag_tab_field>);
static_assert(offsetof(tag_tab_field, tab_byte) == 8 && offsetof(tag_tab_field, tab_name) == 9 &&
              offsetof(tag_tab_field, tab_bits) == 26);
