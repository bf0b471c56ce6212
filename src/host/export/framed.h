#pragma once

#include "host/export/export_options.h"
#include "host/picture/picture.h"
#include "module/contract/records/video_standard.h"

namespace zel::exporter {

/// The picture of a video standard's frame in a frame with square pixels. Colours are filtered weighed by alpha, and
/// what the picture does not cover is transparent.
/// @throws std::runtime_error when Fit::kPixel needs a larger frame; std::bad_alloc
picture::Picture Framed(const picture::Picture& picture, VideoStandard standard, FrameSize frame, Fit fit);

}  // namespace zel::exporter
