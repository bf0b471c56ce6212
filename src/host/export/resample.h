#pragma once

#include "host/picture/picture.h"

namespace zel::exporter {

/// The picture in another size. Colours are weighed with their alpha, so that a clear pixel's colour leaves no fringe.
/// @param x_scale  pixels of the result for one of the picture; the two have the same middle.
/// @throws std::bad_alloc
picture::Picture Resampled(const picture::Picture& picture, int width, int height, double x_scale, double y_scale);

/// The frame with square pixels: 655 x 486 or 785 x 576.
picture::Picture WithSquarePixels(const picture::Picture& frame);

inline constexpr int kThumbnailWidth = 240;   ///< pixels
inline constexpr int kThumbnailHeight = 178;  ///< lines of the higher one, that of 486 lines.

/// The frame small, with square pixels: 240 x 178 or, of 576 lines, 240 x 176.
picture::Picture Thumbnail(const picture::Picture& frame);

}  // namespace zel::exporter
