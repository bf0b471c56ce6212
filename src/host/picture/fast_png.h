#pragma once

#include <string>

#include "host/picture/picture.h"
#include "host/picture/png_writer.h"

namespace zel::picture {

/// A PNG file made in as little time as possible.
/// @throws std::runtime_error with the reason.
std::string EncodeFastPng(const Picture& picture, PngForm form);

}  // namespace zel::picture
