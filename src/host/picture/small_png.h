#pragma once

#include <string>

#include "host/picture/picture.h"
#include "host/picture/png_writer.h"

namespace zel::picture {

/// A PNG file of few bytes, made in some tenths of a second: the shortest of what several filters give, in the colour
/// type with the fewest samples that holds the pixels.
/// @throws std::runtime_error with the reason.
std::string EncodeSmallPng(const Picture& picture, PngForm form);

}  // namespace zel::picture
