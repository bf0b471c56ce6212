#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace zel {

/// Entries of a font's character directory; a character code is the index.
inline constexpr int kDirectoryEntries = 192;
/// glyph_kind of a stored bitmap glyph; stored value.
inline constexpr std::uint8_t kStoredGlyph = 170;
/// Bits of glyph_kind of a run-coded glyph. 170 has one of them set, so the test for 170 comes first.
inline constexpr std::uint8_t kRunCodedBits = 0x02 | 0x40;

}  // namespace zel

/// Directory entry of one character, 10 bytes.
struct [[gnu::packed]] tag_char_entry {
    std::uint8_t glyph_kind;     //  0  170: stored bitmap glyph; else bit 0x02 or 0x40: run-coded; else no glyph
    std::uint8_t unread_1;       //  1
    std::uint32_t glyph_word;    //  2  from bit 0: glyph_bits_a:6, glyph_bits_b:6, glyph_top:10, glyph_metric:10
    std::uint32_t glyph_offset;  //  6  byte in the encoding data, or file position of the stored glyph's record

    bool IsStored() const noexcept { return glyph_kind == zel::kStoredGlyph; }
    bool IsRunCoded() const noexcept { return !IsStored() && (glyph_kind & zel::kRunCodedBits) != 0; }
    bool HasGlyph() const noexcept { return IsStored() || IsRunCoded(); }
    /// glyph_top, pixels.
    int Top() const noexcept { return static_cast<int>(glyph_word >> 12 & 0x3FF); }
    /// glyph_metric.
    int Metric() const noexcept { return static_cast<int>(glyph_word >> 22); }
};
static_assert(sizeof(tag_char_entry) == 10 && std::is_trivially_copyable_v<tag_char_entry>);
static_assert(offsetof(tag_char_entry, glyph_word) == 2 && offsetof(tag_char_entry, glyph_offset) == 6);
