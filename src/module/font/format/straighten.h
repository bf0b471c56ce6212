#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "base/instructions.h"

namespace zel::font::straighten {

/// 255 / alpha as a fixed-point number with 20 fractional bits, rounded up; 0 for alpha 0.
inline constexpr auto kFactors = [] {
    std::array<std::uint32_t, 256> factors{};
    for (std::uint32_t alpha = 1; alpha < 256; ++alpha) factors[alpha] = ((255U << 20) + alpha - 1) / alpha;
    return factors;
}();

/// The straight value of a colour that was multiplied by alpha: colour * 255 / alpha + 0.5, truncated. The rounded-up
/// factor makes the quotient at most 255 / 2^20 too large. That never changes the result: a quotient that isn't exactly
/// n + 0.5 differs from every such value by at least 1 / 510.
/// @param colour  at most `alpha`.
constexpr std::uint8_t Colour(unsigned colour, unsigned alpha) noexcept {
    return static_cast<std::uint8_t>((colour * kFactors[alpha] + (1U << 19)) >> 20);
}

/// Rows of pixels and their destination. StraightenPixels describes the conversion.
struct Rows {
    const std::uint8_t* from;
    /// Bytes from the start of a row to the start of the next one; may be negative.
    std::ptrdiff_t from_stride;
    /// Receives the rows without gaps. Equal to `from`, or doesn't overlap it.
    std::uint8_t* to;
    /// In pixels.
    std::size_t width;
    std::size_t height;
};

/// One implementation of the conversion. All implementations give the same bytes.
struct Path {
    const char* name;
    base::Instructions needs;
    void (*convert_rows)(const Rows& rows) noexcept;

    /// Converts `count` pixels.
    void Convert(const std::uint8_t* from, std::uint8_t* to, std::size_t count) const noexcept {
        convert_rows({from, 0, to, count, 1});
    }
};

/// The implementations that this processor supports, the fastest first. The last one needs no vector instructions.
std::span<const Path> Paths() noexcept;

}  // namespace zel::font::straighten
