#include "font/stored_glyph.h"

#include <algorithm>
#include <cstring>

#include "message/big_endian_cursor.h"

StoredGlyphHead ConvertStoredGlyphHead(std::span<const std::uint8_t> record) noexcept {
    BigEndianCursor in(record);
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
    for (; pixels.size() >= 4; pixels = pixels.subspan(4)) {
        const unsigned alpha = pixels[0];
        if (alpha == 0) {
            std::memset(pixels.data(), 0, 4);
            continue;
        }
        // c * 255 / alpha + 0.5, cut off, in integers
        for (std::size_t i = 1; i < 4; ++i) {
            const unsigned colour = std::min<unsigned>(pixels[i], alpha);
            pixels[i - 1] = static_cast<std::uint8_t>((colour * 510 + alpha) / (2 * alpha));
        }
        pixels[3] = static_cast<std::uint8_t>(alpha);
    }
}

void CopyRowsReversed(std::span<const std::uint8_t> rows, std::size_t row_size, std::size_t height,
                      std::span<std::uint8_t> bottom_up) noexcept {
    if (row_size == 0) return;
    const std::size_t fit = std::min(height, bottom_up.size() / row_size);
    for (std::size_t row = 0; row < fit; ++row) {
        const std::size_t source = height - 1 - row;
        if (source >= rows.size() / row_size) continue;
        std::memcpy(bottom_up.data() + row * row_size, rows.data() + source * row_size, row_size);
    }
}
