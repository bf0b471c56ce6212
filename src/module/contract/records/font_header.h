#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "base/field_text.h"

namespace zel {

// Value and bits of font_flags; stored values.

/// This value: encoding data and a sample block follow the directory directly.
inline constexpr std::uint16_t kFontFlagsLeadingSample = 18;
/// Bit: encoding data in the usual place. Clear: "Tessor" encoded.
inline constexpr std::uint16_t kFontPlain = 0x20;
/// Bit: two character tables are present.
inline constexpr std::uint16_t kFontCharTables = 0x04;
/// Either bit: an empty row does not take its limits from such a font.
inline constexpr std::uint16_t kFontOwnLimits = 0x10 | 0x40;

}  // namespace zel

/// Header of a font, 128 bytes at file offset 136, kept in memory at the file's offsets with its words converted.
struct [[gnu::packed]] tag_font_header {
    char font_name[70];           //   0  ended by NUL, or by the field
    char font_id_text[4];         //  70  digits
    std::uint8_t unread_74[4];    //  74
    std::int16_t font_height;     //  78  pixels, edge included
    std::int16_t row_top_offset;  //  80
    std::uint16_t unread_82;      //  82
    std::uint8_t edge_bits;       //  84  low nibble edge_type, high nibble edge_direction (the file has them exchanged)
    std::uint8_t edge_size;       //  85  pixels
    std::uint16_t unread_86;      //  86  from bit 0: 7 bits, 9 bits
    std::uint8_t unread_88[6];    //  88
    std::uint32_t unread_94;      //  94
    std::uint32_t encoding_size;  //  98  bytes
    std::int16_t aux_block_size;  // 102  bytes
    std::uint16_t font_flags;     // 104
    std::uint16_t unread_106[6];  // 106
    std::int16_t row_inset;       // 118
    std::uint32_t word_table_size;  // 120  bytes; only the low 16 bits are used, signed
    std::uint16_t sample_present;   // 124
    std::uint8_t unread_126[2];     // 126

    int EdgeType() const noexcept { return edge_bits & 0xF; }
    int EdgeDirection() const noexcept { return edge_bits >> 4; }
    /// The low 16 bits of word_table_size, as the legacy machine reads them.
    std::int16_t WordTableBytes() const noexcept { return static_cast<std::int16_t>(word_table_size & 0xFFFF); }
    /// font_name up to its first NUL, or to the end of the field.
    std::string_view Name() const noexcept { return zel::base::FieldText(font_name); }
    /// font_id_text likewise.
    std::string_view IdText() const noexcept { return zel::base::FieldText(font_id_text); }
};
static_assert(sizeof(tag_font_header) == 128 && std::is_trivially_copyable_v<tag_font_header>);
static_assert(offsetof(tag_font_header, font_id_text) == 70 && offsetof(tag_font_header, font_height) == 78 &&
              offsetof(tag_font_header, row_top_offset) == 80 && offsetof(tag_font_header, edge_bits) == 84 &&
              offsetof(tag_font_header, edge_size) == 85 && offsetof(tag_font_header, encoding_size) == 98 &&
              offsetof(tag_font_header, aux_block_size) == 102 && offsetof(tag_font_header, font_flags) == 104 &&
              offsetof(tag_font_header, row_inset) == 118 && offsetof(tag_font_header, word_table_size) == 120 &&
              offsetof(tag_font_header, sample_present) == 124);

/// Head of a sample block, 10 bytes; passed by value.
struct tag_samp_struct {
    std::int16_t samp_first_word;  // 0
    std::int16_t width_a;          // 2  bytes in a row of the first sample
    std::int16_t height_a;         // 4  rows of the first sample
    std::int16_t width_b;          // 6
    std::int16_t height_b;         // 8
};
static_assert(sizeof(tag_samp_struct) == 10 && std::is_trivially_copyable_v<tag_samp_struct>);
