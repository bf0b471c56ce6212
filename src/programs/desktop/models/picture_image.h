#pragma once

#include <QImage>
#include <string>

#include "host/picture/picture.h"

namespace zel::desktop {

/// A copy of a picture; straight alpha.
QImage ImageOf(const picture::Picture& picture);

/// The picture of a PNG file's bytes; a null image for bytes that are none.
QImage ImageOfPng(const std::string& png);

/// How many times as wide as high a pixel of the picture is: 4:3 screens of 720 pixels and 486 or 576 lines. A picture
/// of another width has square pixels.
double PixelAspect(int width, int lines);

}  // namespace zel::desktop
