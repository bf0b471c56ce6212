#pragma once

#include "host/picture/picture.h"
#include "module/contract/records/video_standard.h"

namespace zel::exporter {

/// Size in pixels of the higher thumbnail, that of NTSC.
inline constexpr int kThumbnailWidth = 240;
inline constexpr int kThumbnailHeight = 178;

/// The frame reduced, with square pixels: 240 x 178, of PAL 240 x 176.
/// @throws std::bad_alloc
picture::Picture Thumbnail(const picture::Picture& frame, VideoStandard standard);

}  // namespace zel::exporter
