#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zel::font {

/// Head of a stored bitmap glyph's record, 12 bytes. The pixels follow, 4 bytes each, top row first.
struct StoredGlyphHead {
    std::uint32_t length;    //  0  size of the record in bytes, including these 4
    std::uint16_t flags;     //  4  bit 15: the flag that GetMFRect returns
    std::uint16_t unread_6;  //  6
    std::int16_t width;      //  8  pixels; the file has one more
    std::int16_t height;     // 10  pixels

    bool Flag() const noexcept { return (flags & 0x8000) != 0; }
};
inline constexpr std::size_t kStoredGlyphHeadSize = 4 + 2 + 2 + 2 + 2;

/// Converts the head of a stored glyph.
/// @param record  the record's first bytes; missing ones of the 12 read as zeros.
StoredGlyphHead ConvertStoredGlyphHead(std::span<const std::uint8_t> record) noexcept;

/// Damage to the record of a stored bitmap glyph.
enum class StoredGlyphFault {
    kNone = 0,
    /// The file ends within the head.
    kHeadCutShort,
    /// The width or the height is 0 or below.
    kNoPixels,
    /// The length is too small for the pixels.
    kTooSmall,
    /// The file ends within the record.
    kPixelsCutShort,
};

/// Checks a record; returns the first fault in the order above.
/// @param present  number of bytes from the start of the record to the end of the file.
StoredGlyphFault CheckStoredGlyph(const StoredGlyphHead& head, std::size_t present) noexcept;

/// Converts pixels in place, from alpha, blue, green, red with the colour multiplied by alpha to blue, green, red,
/// alpha with the straight colour. A colour byte above its alpha counts as its alpha. A pixel of alpha 0 becomes all
/// zero.
/// @param pixels  4 bytes each; an incomplete pixel at the end is left unchanged.
void StraightenPixels(std::span<std::uint8_t> pixels) noexcept;

/// Converts the rows of a glyph likewise and writes them in reverse order, for a bottom-up bitmap.
/// @param rows       the rows, top row first. Incomplete and missing rows are not written.
/// @param row_size   in bytes, a multiple of 4.
/// @param height     number of rows.
/// @param bottom_up  receives the rows, the last one first, without gaps. A row that doesn't fit completely is not
///                   written.
void StraightenRowsReversed(std::span<const std::uint8_t> rows, std::size_t row_size, std::size_t height,
                            std::span<std::uint8_t> bottom_up) noexcept;

}  // namespace zel::font
