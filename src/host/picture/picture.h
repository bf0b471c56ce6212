#pragma once

#include <cstdint>
#include <vector>

#include "host/picture/pixel_view.h"
#include "module/contract/records/video_standard.h"

namespace zel::picture {

/// Width of a message's picture in pixels, in both video standards.
inline constexpr int kPictureWidth = 720;

/// Shape of a pixel in a picture of this height: that of the video standard with as many lines. Any other height, which
/// only the picture of an RGBA file has, belongs to no standard and is shown like NTSC.
constexpr PixelAspect VideoAspect(int height) noexcept {
    return PixelAspectOf(VideoStandardOf(height).value_or(VideoStandard::kNtsc));
}

/// A picture with straight alpha.
struct Picture {
    int width = 0;
    int height = 0;
    /// width * height * 4 bytes: red, green, blue and alpha of each pixel, top row first.
    std::vector<std::uint8_t> rgba;
    /// For each row whether it may have a pixel that is not 0; empty if that is unknown. Most rows of a message's
    /// picture are clear, and what is known to be clear is neither searched nor cleared.
    std::vector<bool> drawn_rows{};

    /// To draw on: the drawn rows are unknown afterwards.
    PixelView View() {
        drawn_rows.clear();
        return {rgba, width, height};
    }
    ConstPixelView View() const { return {rgba, width, height}; }

    bool MayBeDrawn(int y) const { return drawn_rows.empty() || drawn_rows[static_cast<std::size_t>(y)]; }
};

/// A picture with all pixels transparent black.
inline Picture ClearPicture(int width, int height) {
    return {width, height, std::vector<std::uint8_t>(PixelBytes(width, height))};
}

}  // namespace zel::picture
