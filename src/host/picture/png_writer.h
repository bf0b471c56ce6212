#pragma once

#include <filesystem>
#include <string>

#include "host/picture/picture.h"

namespace zel::picture {

/// What a PNG holds of each pixel, 8 bits a channel.
enum class PngChannels {
    kColourAndAlpha,  ///< red, green, blue and alpha, as they stand in the picture.
    kColour,          ///< red, green and blue.
    kAlpha,           ///< the alpha as grey.
};

/// The shape of a pixel that a PNG tells.
enum class PixelShape {
    kVideo,   ///< the screen is 4:3: 10:11 as wide as high in 486 lines and 12:11 in 576.
    kSquare,  ///< as wide as high.
};

struct PngForm {
    PngChannels channels = PngChannels::kColourAndAlpha;
    PixelShape shape = PixelShape::kVideo;
};

/// The bytes of a PNG file. The same picture always gives the same bytes.
/// @throws std::runtime_error with the reason.
std::string EncodePng(const Picture& picture, PngForm form = {});

/// Writes a picture as PNG with its alpha and its pixels' shape. The file appears whole or not at all.
/// @throws std::runtime_error with the file's name and the reason; a file that was there before stays as it was.
void WritePng(const std::filesystem::path& file, const Picture& picture);

}  // namespace zel::picture
