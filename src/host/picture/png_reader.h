#pragma once

#include <string_view>

#include "host/picture/picture.h"

namespace zel::picture {

/// Largest width and height, and largest number of pixels, of a picture that is read.
inline constexpr int kMaxPngSide = 8192;
inline constexpr int kMaxPngPixels = 1 << 24;

/// Reads the bytes of a PNG file in any form: grey, palette, 1 to 16 bits and interlaced pictures are converted to 8
/// bits each of red, green, blue and straight alpha.
/// @throws std::runtime_error with the reason, for bytes that aren't a complete PNG, and for a picture beyond the
///         limits, before memory is allocated for it.
Picture DecodePng(std::string_view bytes);

}  // namespace zel::picture
