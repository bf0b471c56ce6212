#pragma once

#include <filesystem>
#include <string>

#include "host/picture/picture.h"

namespace zel::picture {

/// The channels of a PNG, 8 bits each.
enum class PngChannels {
    /// Red, green, blue and straight alpha, as in the picture.
    kColourAndAlpha,
    /// Red, green and blue.
    kColour,
    /// The alpha as grey.
    kAlpha,
};

/// The pixel aspect ratio that a PNG contains.
enum class PixelShape {
    /// That of VideoAspect.
    kVideo,
    /// As wide as high.
    kSquare,
};

/// How a PNG's chunk pHYs gives the pixel aspect ratio.
enum class AspectChunk {
    /// As PNG defines it.
    kPng,
    /// Width and height exchanged, as FFmpeg reads and writes it.
    kFfmpeg,
    /// Without the chunk.
    kNone,
};

/// How much time is spent on a PNG.
enum class PngEffort {
    /// Under a millisecond for a picture of text.
    kFast,
    /// Some tenths of a second, for a fifth to a quarter fewer bytes.
    kSmall,
};

struct PngForm {
    PngChannels channels = PngChannels::kColourAndAlpha;
    PixelShape shape = PixelShape::kVideo;
    PngEffort effort = PngEffort::kFast;
    AspectChunk aspect_chunk = AspectChunk::kPng;
};

/// The bytes of a PNG file. The same picture always gives the same bytes with the same libraries on the same processor.
/// @throws std::runtime_error with the reason.
std::string EncodePng(const Picture& picture, PngForm form = {});

/// Writes a picture as PNG with its alpha and its pixel aspect ratio. The file appears complete or not at all.
/// @throws std::runtime_error with the file's name and the reason; an existing file is unchanged then.
void WritePng(const std::filesystem::path& file, const Picture& picture, PngForm form = {});

}  // namespace zel::picture
