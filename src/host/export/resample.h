#pragma once

#include "host/picture/picture.h"

/// The picture in another size. Colours are weighed with their alpha, so that a clear pixel's colour leaves no fringe.
/// @param x_scale  pixels of the result for one of the picture; the two have the same middle.
/// @throws std::bad_alloc
Picture Resampled(const Picture& picture, int width, int height, double x_scale, double y_scale);

/// The frame with square pixels: 655 x 486 or 785 x 576.
Picture WithSquarePixels(const Picture& frame);

inline constexpr int kThumbnailWidth = 240;   ///< pixels
inline constexpr int kThumbnailHeight = 178;  ///< lines of the higher one, that of 486 lines.

/// The frame small, with square pixels: 240 x 178 or, of 576 lines, 240 x 176.
Picture Thumbnail(const Picture& frame);
