#pragma once

#include "host/picture/picture.h"
#include "module/contract/records/video_standard.h"

namespace zel::exporter {

/// The picture in the centre of a transparent frame of 720 x 486 or 720 x 576 pixels. It isn't scaled; parts outside
/// the frame are cut off. Its upper edge moves by an even number of rows, which keeps its interlaced fields. A picture
/// of the frame's size is returned unchanged.
picture::Picture PlacedOnFrame(picture::Picture picture, VideoStandard standard);

}  // namespace zel::exporter
