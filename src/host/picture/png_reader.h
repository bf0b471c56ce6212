#pragma once

#include <string_view>

#include "host/picture/picture.h"

namespace zel::picture {

/// Largest width and height, and most pixels, of a picture that is read.
inline constexpr int kLargestPngSide = 8192;
inline constexpr int kMostPngPixels = 1 << 24;

/// Reads a PNG file's bytes, whatever its form: grey, palette, 1 to 16 bits and interlaced ones come as 8 bits each of
/// red, green, blue and straight alpha.
/// @throws std::runtime_error with the reason, for bytes that are no whole PNG and for a picture beyond the limits,
///         which is found out before its memory is taken.
Picture DecodePng(std::string_view bytes);

}  // namespace zel::picture
