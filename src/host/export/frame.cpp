#include "host/export/frame.h"

#include <algorithm>
#include <cstdlib>

namespace zel::exporter {

namespace {

/// Pixels between the edges of a picture and a frame that have the same centre, in one direction.
/// @param step  a smaller number of pixels is rounded down to a multiple of it.
int Margin(int picture, int frame, int step) noexcept {
    return std::abs(frame - picture) / 2 / step * step;
}

}  // namespace

picture::Picture PlacedOnFrame(picture::Picture picture, VideoStandard standard) {
    const int width = picture::kPictureWidth, height = ActiveLines(standard);
    if (picture.width == width && picture.height == height) return picture;
    picture::Picture frame = picture::ClearPicture(width, height);
    const int across = Margin(picture.width, width, 1), down = Margin(picture.height, height, 2);
    // In each direction the margin is in the larger of the two.
    const int source_left = picture.width > width ? across : 0, left = across - source_left;
    const int source_top = picture.height > height ? down : 0, top = down - source_top;
    const picture::PixelView source =
        picture.View().Part({source_left, source_top, source_left + width, source_top + height});
    const picture::PixelView target = frame.View().Part({left, top, left + source.Width(), top + source.Height()});
    for (int y = 0; y < target.Height(); ++y) std::ranges::copy(source.Row(y), target.Row(y).begin());
    return frame;
}

}  // namespace zel::exporter
