#include "host/picture/composite.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace zel::picture {

namespace {

/// The part of a box that lies on the canvas, in the box's own pixels.
struct Part {
    int left, top, right, bottom;
};

/// Sizes and places are those of the formats, 16 bits or so: their sums can't wrap.
Part PartOn(const Canvas& canvas, int x, int y, int width, int height) noexcept {
    return {std::max(0, -x), std::max(0, -y), std::min(width, canvas.width - x), std::min(height, canvas.height - y)};
}

std::uint8_t* PixelAt(const Canvas& canvas, int x, int y) noexcept {
    const std::size_t index = static_cast<std::size_t>(y) * static_cast<std::size_t>(canvas.width);
    return canvas.rgba.data() + (index + static_cast<std::size_t>(x)) * 4;
}

inline void LayPixel(Rgba source, std::uint8_t* pixel) noexcept {
    const Rgba mixed = Over(source, {pixel[0], pixel[1], pixel[2], pixel[3]});
    pixel[0] = mixed.red;
    pixel[1] = mixed.green;
    pixel[2] = mixed.blue;
    pixel[3] = mixed.alpha;
}

void LayPixels(const std::uint8_t* source, std::uint8_t* pixel, std::size_t count) noexcept {
    for (; count > 0; --count, source += 4, pixel += 4) {
        if (source[3] != 0) LayPixel({source[2], source[1], source[0], source[3]}, pixel);
    }
}

/// Four pixels, which the compiler works on at once where the processor can; alpha in each one's top byte.
using Four [[gnu::vector_size(16)]] = std::uint32_t;
constexpr std::size_t kFour = 4;
constexpr std::uint32_t kAlphaBits = 0xFF000000, kRedAndBlue = 0x00FF00FF;

Four LoadFour(const std::uint8_t* pixels) noexcept {
    Four four;
    std::memcpy(&four, pixels, sizeof four);
    return four;
}

bool AllClear(Four pixels) noexcept {
    const Four alpha = pixels & kAlphaBits;
    std::uint64_t halves[2];
    std::memcpy(halves, &alpha, sizeof alpha);
    return (halves[0] | halves[1]) == 0;
}

/// Lays a row of the module's pixels over the canvas. Most of a glyph falls on clear ground and comes as it is, with
/// red and blue in each other's place. Whether a pixel of it is clear changes too often to be asked in a branch.
void LayRow(const std::uint8_t* source, std::uint8_t* pixel, std::size_t count) noexcept {
    for (; count >= kFour; count -= kFour, source += 4 * kFour, pixel += 4 * kFour) {
        const Four above = LoadFour(source);
        const Four below = LoadFour(pixel);
        if (!AllClear(below)) {
            LayPixels(source, pixel, kFour);
            continue;
        }
        const Four turned = above >> 16 | above << 16;
        const Four straight = (above & ~kRedAndBlue) | (turned & kRedAndBlue);
        const Four is_clear = (above & kAlphaBits) == 0;
        const Four laid = (straight & ~is_clear) | (below & is_clear);
        std::memcpy(pixel, &laid, sizeof laid);
    }
    LayPixels(source, pixel, count);
}

}  // namespace

void LayBitmap(const Canvas& canvas, int x, int y, int width, int height, std::span<const std::uint8_t> bgra) noexcept {
    const Part part = PartOn(canvas, x, y, width, height);
    for (int row = part.top; row < part.bottom && part.left < part.right; ++row) {
        const auto from_bottom = static_cast<std::size_t>(height - 1 - row);
        const std::uint8_t* source =
            bgra.data() + (from_bottom * static_cast<std::size_t>(width) + static_cast<std::size_t>(part.left)) * 4;
        std::uint8_t* pixel = PixelAt(canvas, x + part.left, y + row);
        LayRow(source, pixel, static_cast<std::size_t>(part.right - part.left));
    }
}

void LayColour(const Canvas& canvas, int x, int y, int width, int height, std::span<const std::uint8_t> coverage,
               COLORREF colour) noexcept {
    const Part part = PartOn(canvas, x, y, width, height);
    Rgba paint{static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 8),
               static_cast<std::uint8_t>(colour >> 16), 0};
    for (int row = part.top; row < part.bottom && part.left < part.right; ++row) {
        const std::uint8_t* source = coverage.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                                     static_cast<std::size_t>(part.left);
        std::uint8_t* pixel = PixelAt(canvas, x + part.left, y + row);
        for (int column = part.left; column < part.right; ++column, ++source, pixel += 4) {
            if (*source == 0) continue;
            paint.alpha = *source;
            LayPixel(paint, pixel);
        }
    }
}

}  // namespace zel::picture
