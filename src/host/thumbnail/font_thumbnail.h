#pragma once

#include <cstdint>
#include <span>

#include "host/picture/picture.h"

namespace zel::thumbnail {

/// Glyphs of a font in squares, capital letters first.
/// @param file  the bytes of the font file; may be damaged.
/// @param side  of the picture in pixels.
picture::Picture FontThumbnail(std::span<const std::uint8_t> file, int side);

}  // namespace zel::thumbnail
