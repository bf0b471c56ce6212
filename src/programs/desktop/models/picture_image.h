#pragma once

#include <QImage>
#include <string>

#include "host/picture/picture.h"

namespace zel::desktop {

/// A copy of a picture; straight alpha.
QImage ImageOf(const picture::Picture& picture);

/// The picture of a PNG file's bytes; a null image for bytes that are none.
QImage ImageOfPng(const std::string& png);

/// Width of a pixel of the picture in units of its height, see picture::VideoAspect. A picture of another width than a
/// message's has square pixels.
double PixelAspect(int width, int lines);

}  // namespace zel::desktop
