#pragma once

#include <cstdint>
#include <span>

#include "host/picture/coverage.h"
#include "host/picture/pixel_view.h"
#include "platform/system/types.h"

namespace zel::picture {

/// Drawing on a view. "Blend" puts the source over what is there, see Over; what is outside the view is cut off. Sizes
/// and positions have 16 bits or so, as in the files: their sums don't overflow.

/// Sets every pixel.
void Fill(PixelView view, Rgba colour) noexcept;

/// Sets every pixel to one of two colours, in squares of so many pixels a side; the first colour is in the upper left
/// corner.
void FillCheckerboard(PixelView view, int square, Rgba first, Rgba second) noexcept;

/// Blends one colour over every pixel.
void Blend(PixelView view, Rgba colour) noexcept;

/// Blends pixels over the view, their upper left corner at (x, y).
void BlendPixels(PixelView view, int x, int y, ConstPixelView source) noexcept;

/// A bitmap as the module makes it: blue, green, red, alpha, bottom row first.
struct ModuleBitmap {
    int width = 0;
    int height = 0;
    /// width * height * 4 bytes.
    std::span<const std::uint8_t> bgra;
};

/// Blends a bitmap over the view, its upper left corner at (x, y).
void BlendBitmap(PixelView view, int x, int y, const ModuleBitmap& bitmap) noexcept;

/// Blends a colour over the pixels that a character covers.
/// @param x         of the pen.
/// @param baseline  the row below the character's feet.
void BlendCoverage(PixelView view, int x, int baseline, const Coverage& coverage, COLORREF colour) noexcept;

}  // namespace zel::picture
