#include "host/export/frame.h"

#include <algorithm>
#include <utility>

namespace zel::exporter {

namespace {

/// Which part of a picture is seen along one side of the frame.
struct Span {
    int from;   ///< in the picture
    int to;     ///< on the frame
    int count;  ///< pixels or lines
};

/// @param step  what the middle is rounded down to.
Span Middle(int picture, int frame, int step) noexcept {
    const int free = std::abs(frame - picture) / 2 / step * step;
    if (picture <= frame) return {0, free, picture};
    return {free, 0, frame};
}

}  // namespace

picture::Picture PlacedOnFrame(picture::Picture picture, int lines) {
    if (picture.width == picture::kPictureWidth && picture.height == lines) return picture;
    picture::Picture frame{picture::kPictureWidth, lines, {}};
    frame.rgba.assign(static_cast<std::size_t>(picture::kPictureWidth) * static_cast<std::size_t>(lines) * 4, 0);
    const Span across = Middle(picture.width, picture::kPictureWidth, 1);
    const Span down = Middle(picture.height, lines, 2);
    const auto offset = [](int x, int y, int width) { return (static_cast<std::ptrdiff_t>(y) * width + x) * 4; };
    for (int n = 0; n < down.count; ++n) {
        const auto from = picture.rgba.begin() + offset(across.from, down.from + n, picture.width);
        std::copy_n(from, across.count * 4,
                    frame.rgba.begin() + offset(across.to, down.to + n, picture::kPictureWidth));
    }
    return frame;
}

picture::Picture Premultiplied(picture::Picture picture) {
    for (std::size_t n = 0; n + 3 < picture.rgba.size(); n += 4) {
        const unsigned alpha = picture.rgba[n + 3];
        for (std::size_t channel = n; channel < n + 3; ++channel) {
            picture.rgba[channel] = static_cast<std::uint8_t>((picture.rgba[channel] * alpha + 127) / 255);
        }
    }
    return picture;
}

}  // namespace zel::exporter
