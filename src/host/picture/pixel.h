#pragma once

#include <cstdint>
#include <type_traits>

#include "platform/system/types.h"

namespace zel::picture {

/// A pixel of a picture, 8 bits a channel, with straight alpha: the colour isn't multiplied by the alpha. The members
/// are in the order of the bytes in memory.
struct Rgba {
    std::uint8_t red = 0, green = 0, blue = 0, alpha = 0;
    bool operator==(const Rgba&) const = default;
};
static_assert(sizeof(Rgba) == 4 && alignof(Rgba) == 1 && std::is_trivially_copyable_v<Rgba>);

/// @param colour  red in the lowest byte, then green and blue.
constexpr Rgba RgbaOf(COLORREF colour, std::uint8_t alpha) noexcept {
    return {static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 8),
            static_cast<std::uint8_t>(colour >> 16), alpha};
}

/// `source` over `ground`, each channel rounded to the nearest. Two clear pixels give the ground.
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

}  // namespace zel::picture
