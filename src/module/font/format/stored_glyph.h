#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zel::font {

/// Head of a stored bitmap glyph's record, 12 bytes; pixels follow, 4 bytes each, top row first.
struct StoredGlyphHead {
    std::uint32_t length;    //  0  bytes of the record, these 4 included
    std::uint16_t flags;     //  4  bit 15: the flag that GetMFRect gives
    std::uint16_t unread_6;  //  6
    std::int16_t width;      //  8  pixels; the file holds one more
    std::int16_t height;     // 10  pixels

    bool Flag() const noexcept { return (flags & 0x8000) != 0; }
};
inline constexpr std::size_t kStoredGlyphHeadSize = 4 + 2 + 2 + 2 + 2;

/// The head from the record's first bytes; missing ones read as zero.
StoredGlyphHead ConvertStoredGlyphHead(std::span<const std::uint8_t> record) noexcept;

/// What is wrong with a stored bitmap glyph's record.
enum class StoredGlyphFault {
    kNone = 0,
    kHeadCutShort,    ///< the file ends within the head.
    kNoPixels,        ///< the width or the height is 0 or below.
    kTooSmall,        ///< the length is too small for the pixels.
    kPixelsCutShort,  ///< the file ends within the record.
};

/// @param present  bytes from the record's first to the file's end.
StoredGlyphFault CheckStoredGlyph(const StoredGlyphHead& head, std::size_t present) noexcept;

/// Converts pixels in place, from alpha, blue, green, red with the colour multiplied by alpha to blue, green, red,
/// alpha with the straight colour. A colour byte above its alpha counts as its alpha; a pixel of alpha 0 becomes all
/// zero.
/// @param pixels  whole pixels of 4 bytes; what is left over at the end stays as it is.
void StraightenPixels(std::span<std::uint8_t> pixels) noexcept;

/// Converts the rows of a glyph and lays them down in reverse, the last row first, as a bottom-up bitmap wants them.
/// @param rows      `height` rows of `row_size` bytes, whole pixels; rows that end beyond it are left out.
/// @param bottom_up receives them back to back; a row that doesn't fit whole is left out.
void StraightenRowsReversed(std::span<const std::uint8_t> rows, std::size_t row_size, std::size_t height,
                            std::span<std::uint8_t> bottom_up) noexcept;

}  // namespace zel::font
