#pragma once

#include "host/picture/picture.h"
#include "module/contract/records/video_standard.h"

namespace zel::exporter {

/// The picture in the middle of a transparent frame, 720 pixels wide and as high as the standard; what is outside the
/// frame is cut off. The picture isn't scaled, and its first row is at an even row of the frame, or an even number of
/// rows is cut off, to keep its fields. A picture of the frame's size is returned unchanged.
picture::Picture PlacedOnFrame(picture::Picture picture, VideoStandard standard);

}  // namespace zel::exporter
