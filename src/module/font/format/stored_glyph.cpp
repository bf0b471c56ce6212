#include "module/font/format/stored_glyph.h"

#include <algorithm>

#include "module/font/format/straighten.h"
#include "module/message/format/big_endian_cursor.h"

namespace zel::font {

StoredGlyphHead ConvertStoredGlyphHead(std::span<const std::uint8_t> record) noexcept {
    message::BigEndianCursor in(record);
    StoredGlyphHead head{};
    head.length = in.U32();                                //  0
    head.flags = in.U16();                                 //  4
    head.unread_6 = in.U16();                              //  6
    head.width = static_cast<std::int16_t>(in.U16() - 1);  //  8
    head.height = static_cast<std::int16_t>(in.U16());     // 10
    return head;
}

StoredGlyphFault CheckStoredGlyph(const StoredGlyphHead& head, std::size_t present) noexcept {
    if (present < kStoredGlyphHeadSize) return StoredGlyphFault::kHeadCutShort;
    if (head.width <= 0 || head.height <= 0) return StoredGlyphFault::kNoPixels;
    const std::uint64_t pixels = static_cast<std::uint64_t>(head.width) * static_cast<std::uint64_t>(head.height) * 4;
    if (head.length < kStoredGlyphHeadSize + pixels) return StoredGlyphFault::kTooSmall;
    return present < head.length ? StoredGlyphFault::kPixelsCutShort : StoredGlyphFault::kNone;
}

void StraightenPixels(std::span<std::uint8_t> pixels) noexcept {
    straighten::Paths().front().Convert(pixels.data(), pixels.data(), pixels.size() / 4);
}

void StraightenRowsReversed(std::span<const std::uint8_t> rows, std::size_t row_size, std::size_t height,
                            std::span<std::uint8_t> bottom_up) noexcept {
    if (row_size == 0) return;
    // The bitmap starts with the last rows of the glyph, which may be missing from `rows`.
    const std::size_t fit = std::min(height, bottom_up.size() / row_size),
                      present = std::min(height, rows.size() / row_size);
    const std::size_t missing = height - present;
    if (missing >= fit) return;
    straighten::Paths().front().convert_rows({rows.data() + (present - 1) * row_size,
                                              -static_cast<std::ptrdiff_t>(row_size),
                                              bottom_up.data() + missing * row_size, row_size / 4, fit - missing});
}

}  // namespace zel::font
