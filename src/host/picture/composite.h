#pragma once

#include <cstdint>
#include <span>

#include "platform/system/types.h"

namespace zel::picture {

/// Arithmetic on straight alpha: colours that are not multiplied by their alpha, 8 bits a channel.

/// A pixel of a picture, in the order in which it lies in memory.
struct Rgba {
    std::uint8_t red = 0, green = 0, blue = 0, alpha = 0;
    bool operator==(const Rgba&) const = default;
};

/// `source` over `ground`, each channel rounded to the nearest. Nothing over nothing is all zero.
constexpr Rgba Over(Rgba source, Rgba ground) noexcept {
    if (source.alpha == 255 || (ground.alpha == 0 && source.alpha != 0)) return source;
    if (source.alpha == 0) return ground;
    // Shares of the two in the result, in units of 1 / (255 * 255).
    const unsigned above = source.alpha * 255U;
    const unsigned below = ground.alpha * (255U - source.alpha);
    const unsigned both = above + below;
    const auto mix = [=](unsigned s, unsigned g) {
        return static_cast<std::uint8_t>((s * above + g * below + both / 2) / both);
    };
    return {mix(source.red, ground.red), mix(source.green, ground.green), mix(source.blue, ground.blue),
            static_cast<std::uint8_t>((both + 127) / 255)};
}
static_assert(Over({200, 0, 0, 255}, {1, 2, 3, 4}) == Rgba{200, 0, 0, 255});
static_assert(Over({255, 255, 255, 128}, {0, 0, 0, 255}) == Rgba{128, 128, 128, 255});
static_assert(Over({255, 0, 0, 128}, {0, 0, 255, 128}) == Rgba{170, 0, 85, 192});

/// A picture, 4 bytes a pixel (red, green, blue, alpha), top row first, that is drawn on.
struct Canvas {
    int width = 0;
    int height = 0;
    std::span<std::uint8_t> rgba;  ///< width * height * 4 bytes
};

/// Lays a bitmap of the module (blue, green, red, alpha, bottom row first) over the canvas; what lies outside is cut
/// off.
/// @param bgra  width * height * 4 bytes.
void LayBitmap(const Canvas& canvas, int x, int y, int width, int height, std::span<const std::uint8_t> bgra) noexcept;

/// Lays a colour over the canvas where a coverage, a byte a pixel and top row first, lets it through.
/// @param coverage  width * height bytes.
void LayColour(const Canvas& canvas, int x, int y, int width, int height, std::span<const std::uint8_t> coverage,
               COLORREF colour) noexcept;

}  // namespace zel::picture
