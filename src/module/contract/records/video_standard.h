#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace zel {

/// The video standard of a host or of a message. A picture of either is 720 pixels wide and is shown on a 4:3 screen.
enum class VideoStandard : std::uint8_t { kNtsc, kPal };

/// Shape of a pixel on the screen: width to height, in lowest terms.
struct PixelAspect {
    int width = 1;
    int height = 1;

    /// Width of a pixel in units of its height.
    constexpr double Ratio() const noexcept { return static_cast<double>(width) / height; }
    /// Number of square pixels that cover the width of `pixels` pixels, to the nearest.
    constexpr int SquarePixels(int pixels) const noexcept { return (pixels * width * 2 + height) / (height * 2); }

    friend constexpr bool operator==(const PixelAspect&, const PixelAspect&) = default;
};

/// The constants of one video standard.
struct VideoStandardData {
    /// "NTSC" or "PAL".
    const char* name;
    /// Height of the picture in lines, which are rows of pixels. Identifies the standard in settings, libraries and
    /// documents.
    int active_lines;
    /// Number of lines above the picture. Stored vertical positions are too large by it.
    int line_offset;
    PixelAspect pixel_aspect;
};

/// By VideoStandard.
inline constexpr std::array<VideoStandardData, 2> kVideoStandards{{
    {"NTSC", 486, 20, {10, 11}},
    {"PAL", 576, 33, {12, 11}},
}};

constexpr const VideoStandardData& DataOf(VideoStandard standard) noexcept {
    return kVideoStandards[static_cast<std::size_t>(standard)];
}

constexpr const char* NameOf(VideoStandard standard) noexcept {
    return DataOf(standard).name;
}

constexpr int ActiveLines(VideoStandard standard) noexcept {
    return DataOf(standard).active_lines;
}

constexpr int LineOffset(VideoStandard standard) noexcept {
    return DataOf(standard).line_offset;
}

constexpr PixelAspect PixelAspectOf(VideoStandard standard) noexcept {
    return DataOf(standard).pixel_aspect;
}

/// The standard with this number of active lines; empty for any other number.
constexpr std::optional<VideoStandard> VideoStandardOf(int active_lines) noexcept {
    for (const VideoStandard standard : {VideoStandard::kNtsc, VideoStandard::kPal}) {
        if (ActiveLines(standard) == active_lines) return standard;
    }
    return std::nullopt;
}

static_assert(VideoStandardOf(486) == VideoStandard::kNtsc && VideoStandardOf(576) == VideoStandard::kPal);
static_assert(PixelAspectOf(VideoStandard::kNtsc).SquarePixels(720) == 655);
static_assert(PixelAspectOf(VideoStandard::kPal).SquarePixels(720) == 785);

}  // namespace zel
