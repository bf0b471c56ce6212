#include "host/export/framed.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "host/picture/resample.h"

namespace zel::exporter {

namespace {

/// The picture in the centre of a frame that is at least as large.
picture::Picture Centred(const picture::Picture& picture, FrameSize frame) {
    // An even number of lines, so that a picture that is not scaled keeps its interlaced fields.
    const int left = (frame.width - picture.width) / 2, top = (frame.height - picture.height) / 2 / 2 * 2;
    picture::Picture result = picture::ClearPicture(frame.width, frame.height);
    const picture::PixelView target = result.View().Part({left, top, left + picture.width, top + picture.height});
    for (int y = 0; y < target.Height(); ++y) std::ranges::copy(picture.View().Row(y), target.Row(y).begin());
    return result;
}

/// A side of the scaled picture: to the nearest pixel, at most the frame's.
int Side(double pixels, int of_frame) {
    return std::clamp(static_cast<int>(std::lround(pixels)), 1, of_frame);
}

}  // namespace

picture::Picture Framed(const picture::Picture& picture, VideoStandard standard, FrameSize frame, Fit fit) {
    if (fit == Fit::kFill) return picture::Stretched(picture, frame.width, frame.height);
    if (fit == Fit::kPixel) {
        if (picture.width > frame.width || picture.height > frame.height) {
            throw std::runtime_error("the frame of " + TextOf(frame) + " is smaller than the picture of " +
                                     TextOf({picture.width, picture.height}));
        }
        return Centred(picture, frame);
    }
    const double aspect = PixelAspectOf(standard).Ratio();
    const double scale = std::min(frame.width / (picture.width * aspect), double{1} * frame.height / picture.height);
    const int width = Side(picture.width * aspect * scale, frame.width);
    const int height = Side(picture.height * scale, frame.height);
    return Centred(picture::Resampled(picture, width, height, aspect * scale, scale), frame);
}

}  // namespace zel::exporter
