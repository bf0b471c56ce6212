#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

// Rows and characters lie in the file with their bit fields packed from the top bit of a byte down, in memory in 16-bit
// words packed from the lowest bit up. The host reads the memory form.

namespace zel {

/// Bits [low, low + width) of a word; the way in which every field below is read and written.
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
/// Characters that a row has room for.
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
    int X() const noexcept { return zel::WordBits<6, 10>::Get(word0); }  ///< char_x, pixels.
    void SetX(int x) noexcept { zel::WordBits<6, 10>::Set(word0, x); }
    int ColourSet() const noexcept { return zel::WordBits<3, 3>::Get(word1); }  ///< colour_set, 0 to 7.
    void SetColourSet(int set) noexcept { zel::WordBits<3, 3>::Set(word1, set); }
    int Y() const noexcept { return zel::WordBits<6, 10>::Get(word1); }  ///< char_y, lines in the row.
    void SetY(int y) noexcept { zel::WordBits<6, 10>::Set(word1, y); }
    int Font() const noexcept { return zel::WordBits<0, 6>::Get(word2); }   ///< char_font: slot, valid below 16.
    int Code() const noexcept { return zel::WordBits<6, 10>::Get(word2); }  ///< char_code, all 10 bits.
    int Next() const noexcept { return zel::WordBits<10, 6>::Get(word3); }  ///< next_char, kChainEnd at the end.
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

    bool Empty() const noexcept { return WordBits<2, 1>::Get(word0) != 0; }  ///< row_empty: no records in the file.
    void SetEmpty(bool empty) noexcept { WordBits<2, 1>::Set(word0, empty ? 1 : 0); }
    int Y() const noexcept { return WordBits<6, 10>::Get(word0); }  ///< row_y, lines.
    void SetY(int y) noexcept { WordBits<6, 10>::Set(word0, y); }
    int FirstChar() const noexcept { return WordBits<0, 6>::Get(word1); }  ///< first_char: start of the chain.
    void SetFirstChar(int index) noexcept { WordBits<0, 6>::Set(word1, index); }
    int Top() const noexcept { return WordBits<6, 10>::Get(word1); }  ///< row_top, lines below row_y.
    void SetTop(int top) noexcept { WordBits<6, 10>::Set(word1, top); }
    int CharCount() const noexcept { return WordBits<0, 6>::Get(word2); }  ///< char_count, 0 to 63.
    void SetCharCount(int count) noexcept { WordBits<0, 6>::Set(word2, count); }
    int Bottom() const noexcept { return WordBits<6, 10>::Get(word2); }  ///< row_bottom, lines below row_y.
    void SetBottom(int bottom) noexcept { WordBits<6, 10>::Set(word2, bottom); }

    bool operator==(const RowHead&) const = default;
};
static_assert(sizeof(RowHead) == 8 && std::is_trivially_copyable_v<RowHead>);

}  // namespace zel

/// One row in memory, 512 bytes whatever its count; records from char_count up are zero.
struct tag_msg_row : zel::RowHead {
    tag_msg_char chars[zel::kRowChars];  // 8
};
static_assert(sizeof(tag_msg_row) == 512 && std::is_trivially_copyable_v<tag_msg_row>);
