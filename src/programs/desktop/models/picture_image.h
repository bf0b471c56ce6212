#pragma once

#include <QImage>
#include <QSize>
#include <string>

#include "host/picture/picture.h"

namespace zel::desktop {

/// A copy of a picture, with straight alpha.
QImage ImageOf(const picture::Picture& picture);

/// Decodes the bytes of a PNG file; a null image if they are not valid.
QImage ImageOfPng(const std::string& png);

/// Width of a pixel in units of its height. A picture of the width of a frame has the pixels of its video standard, by
/// its height; any other picture has square pixels.
double PixelRatio(QSize picture);

}  // namespace zel::desktop
