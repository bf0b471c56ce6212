#pragma once

#include "host/picture/picture.h"

namespace zel::exporter {

/// Width of a frame whose pixels have been made square: 720 pixels of 10:11 in 486 lines, of 12:11 in 576, to the
/// nearest.
constexpr int SquareWidth(int lines) noexcept {
    return lines == 576 ? 785 : 655;
}

/// The picture in the middle of a clear frame of 720 pixels and so many lines; what lies outside is cut off. It isn't
/// scaled, and it is moved down by an even number of lines, so that its fields stay what they are. A picture of the
/// frame's size is given back as it is.
picture::Picture PlacedOnFrame(picture::Picture picture, int lines);

/// The picture with its colours multiplied by their alpha, to the nearest; no colour is above its alpha.
picture::Picture Premultiplied(picture::Picture picture);

}  // namespace zel::exporter
