#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zel::font {

namespace straighten {

/// 255 / alpha in 20 fractional bits, rounded up; 0 for alpha 0.
inline constexpr auto kFactors = [] {
    std::array<std::uint32_t, 256> factors{};
    for (std::uint32_t alpha = 1; alpha < 256; ++alpha) factors[alpha] = ((255U << 20) + alpha - 1) / alpha;
    return factors;
}();

/// A colour that was multiplied by alpha, straight: colour * 255 / alpha + 0.5, cut off. A rounded-up factor brings the
/// result at most 255 / 2^20 too high, and no quotient that isn't a half already lies closer than 1 / 510 to one.
/// @param colour  at most `alpha`.
constexpr std::uint8_t Colour(unsigned colour, unsigned alpha) noexcept {
    return static_cast<std::uint8_t>((colour * kFactors[alpha] + (1U << 19)) >> 20);
}

/// Rows of pixels, as StraightenPixels describes them.
struct Rows {
    const std::uint8_t* from;
    std::ptrdiff_t from_stride;  ///< bytes from a row to the next one, which may lie in front of it.
    std::uint8_t* to;            ///< the rows back to back; may be `from`, and else lies apart from it.
    std::size_t width;           ///< pixels.
    std::size_t height;
};

/// One way of converting pixels. All ways give the same bytes.
struct Path {
    const char* name;
    void (*convert_rows)(const Rows& rows) noexcept;

    void Convert(const std::uint8_t* from, std::uint8_t* to, std::size_t count) const noexcept {
        convert_rows({from, 0, to, count, 1});
    }
};

/// The ways that this processor can go, the fastest first, the one without vector instructions last.
std::span<const Path> Paths() noexcept;

}  // namespace straighten

}  // namespace zel::font
