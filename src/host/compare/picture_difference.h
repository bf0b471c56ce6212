#pragma once

#include <cstdint>
#include <optional>

#include "host/picture/picture.h"

namespace zel::compare {

/// What differs between two pictures. Clear pixels are the same whatever their colour. What lies outside the smaller
/// picture counts as clear there.
struct PictureDifference {
    /// Pixels that differ.
    std::uint64_t pixels = 0;
    /// The smallest box with all of them; empty if there are none.
    picture::PixelBox box{};
    /// Sizes in pixels; 0 without a picture.
    int width_a = 0, height_a = 0, width_b = 0, height_b = 0;

    bool IsNone() const noexcept { return pixels == 0 && width_a == width_b && height_a == height_b; }
};

/// @param a, b  null without a picture.
PictureDifference ComparePictures(const picture::Picture* a, const picture::Picture* b);

/// The picture of A, faded to dark greys, with the differences marked: orange where only A is drawn, blue where only B
/// is, white where both are and differ, and a frame around all of them. The colours differ in brightness, too, and are
/// safe for colour-blind readers.
picture::Picture MarkedPicture(const picture::Picture* a, const picture::Picture* b,
                               const PictureDifference& difference);

}  // namespace zel::compare
