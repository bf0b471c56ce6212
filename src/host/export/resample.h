#pragma once

#include "host/picture/picture.h"
#include "module/contract/records/video_standard.h"

namespace zel::exporter {

/// The picture in another size. Colours are weighted with their alpha, so that a transparent pixel's colour leaves no
/// fringe.
/// @param x_scale  pixels of the result for one of the picture, across; the centre of the picture is kept.
/// @param y_scale  the same, down.
/// @throws std::bad_alloc
picture::Picture Resampled(const picture::Picture& picture, int width, int height, double x_scale, double y_scale);

/// The frame with square pixels: 655 x 486 or 785 x 576.
picture::Picture WithSquarePixels(const picture::Picture& frame, VideoStandard standard);

/// Size in pixels of the higher thumbnail, that of NTSC.
inline constexpr int kThumbnailWidth = 240;
inline constexpr int kThumbnailHeight = 178;

/// The frame reduced, with square pixels: 240 x 178, of PAL 240 x 176.
picture::Picture Thumbnail(const picture::Picture& frame, VideoStandard standard);

}  // namespace zel::exporter
