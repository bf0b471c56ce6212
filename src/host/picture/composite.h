#pragma once

#include <cstdint>
#include <span>

#include "host/picture/coverage.h"
#include "host/picture/pixel_view.h"
#include "platform/system/types.h"

namespace zel::picture {

// Drawing on a view. "Blend" composes the source over the pixels of the view, see Over. Parts outside the view are not
// drawn. Sizes and positions have about 16 bits, as in the files, so their sums do not overflow.

/// Sets every pixel.
void Fill(PixelView view, Rgba colour) noexcept;

/// Fills the view with squares of two colours in turn, beginning with `first` in the upper left corner.
/// @param square  side of a square in pixels, at least 1.
void FillCheckerboard(PixelView view, int square, Rgba first, Rgba second) noexcept;

/// Blends one colour over all pixels.
void Blend(PixelView view, Rgba colour) noexcept;

/// Blends a picture over the view, its upper left corner at (x, y).
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
/// @param x         position of the pen.
/// @param baseline  row of pixels directly below the baseline.
void BlendCoverage(PixelView view, int x, int baseline, const Coverage& coverage, COLORREF colour) noexcept;

}  // namespace zel::picture
