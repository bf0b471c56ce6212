#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

// Rows and characters consist of bit fields. In the file they are packed from the top bit of a byte down; in memory,
// from the lowest bit of a 16-bit word up. The host reads the memory form.

namespace zel {

/// Access to bits [Low, Low + Width) of a word, used by every field below.
template <int Low, int Width>
struct WordBits {
    static constexpr unsigned kMask = (1U << Width) - 1U;
    static constexpr int Get(std::uint16_t word) noexcept { return static_cast<int>(word >> Low & kMask); }
    static constexpr void Set(std::uint16_t& word, int value) noexcept {
        word = static_cast<std::uint16_t>((word & ~(kMask << Low)) | ((static_cast<unsigned>(value) & kMask) << Low));
    }
};

/// Index that ends a chain; there is no such record.
inline constexpr int kChainEnd = 63;
/// Capacity of a row, in characters.
inline constexpr int kRowChars = 63;

}  // namespace zel

/// One character of a row, 8 bytes in the file and in memory.
struct tag_msg_char {
    std::uint16_t word0;  // 0  bit 1 place_flag, bit 2 chain_end, bits 6-15 char_x
    std::uint16_t word1;  // 2  bits 3-5 colour_set, bits 6-15 char_y
    std::uint16_t word2;  // 4  bits 0-5 char_font, bits 6-15 char_code
    std::uint16_t word3;  // 6  bits 10-15 next_char

    bool PlaceFlag() const noexcept { return zel::WordBits<1, 1>::Get(word0) != 0; }
    void SetChainEnd(bool end) noexcept { zel::WordBits<2, 1>::Set(word0, end ? 1 : 0); }
    /// char_x, pixels.
    int X() const noexcept { return zel::WordBits<6, 10>::Get(word0); }
    void SetX(int x) noexcept { zel::WordBits<6, 10>::Set(word0, x); }
    /// colour_set, 0 to 7.
    int ColourSet() const noexcept { return zel::WordBits<3, 3>::Get(word1); }
    void SetColourSet(int set) noexcept { zel::WordBits<3, 3>::Set(word1, set); }
    /// char_y, pixels, relative to row_y.
    int Y() const noexcept { return zel::WordBits<6, 10>::Get(word1); }
    void SetY(int y) noexcept { zel::WordBits<6, 10>::Set(word1, y); }
    /// char_font: slot, valid below 16.
    int Font() const noexcept { return zel::WordBits<0, 6>::Get(word2); }
    /// char_code, all 10 bits.
    int Code() const noexcept { return zel::WordBits<6, 10>::Get(word2); }
    /// next_char, kChainEnd at the end.
    int Next() const noexcept { return zel::WordBits<10, 6>::Get(word3); }
    void SetNext(int next) noexcept { zel::WordBits<10, 6>::Set(word3, next); }

    bool operator==(const tag_msg_char&) const = default;
};
static_assert(sizeof(tag_msg_char) == 8 && std::is_trivially_copyable_v<tag_msg_char>);

namespace zel {

/// Head of a row, 8 bytes in the file and in memory.
struct RowHead {
    std::uint16_t word0;  // 0  bit 2 row_empty, bits 6-15 row_y
    std::uint16_t word1;  // 2  bits 0-5 first_char, bits 6-15 row_top
    std::uint16_t word2;  // 4  bits 0-5 char_count, bits 6-15 row_bottom
    std::uint16_t word3;  // 6  carried for the host

    /// row_empty: no records in the file.
    bool Empty() const noexcept { return WordBits<2, 1>::Get(word0) != 0; }
    void SetEmpty(bool empty) noexcept { WordBits<2, 1>::Set(word0, empty ? 1 : 0); }
    /// row_y, pixels.
    int Y() const noexcept { return WordBits<6, 10>::Get(word0); }
    void SetY(int y) noexcept { WordBits<6, 10>::Set(word0, y); }
    /// first_char: start of the chain.
    int FirstChar() const noexcept { return WordBits<0, 6>::Get(word1); }
    void SetFirstChar(int index) noexcept { WordBits<0, 6>::Set(word1, index); }
    /// row_top, pixels, relative to row_y.
    int Top() const noexcept { return WordBits<6, 10>::Get(word1); }
    void SetTop(int top) noexcept { WordBits<6, 10>::Set(word1, top); }
    /// char_count, 0 to 63.
    int CharCount() const noexcept { return WordBits<0, 6>::Get(word2); }
    void SetCharCount(int count) noexcept { WordBits<0, 6>::Set(word2, count); }
    /// row_bottom, pixels, relative to row_y.
    int Bottom() const noexcept { return WordBits<6, 10>::Get(word2); }
    void SetBottom(int bottom) noexcept { WordBits<6, 10>::Set(word2, bottom); }

    bool operator==(const RowHead&) const = default;
};
static_assert(sizeof(RowHead) == 8 && std::is_trivially_copyable_v<RowHead>);

}  // namespace zel

/// One row in memory, always 512 bytes; the records from index char_count on are zero.
struct tag_msg_row : zel::RowHead {
    tag_msg_char chars[zel::kRowChars];  // 8
};
static_assert(sizeof(tag_msg_row) == 512 && std::is_trivially_copyable_v<tag_msg_row>);
