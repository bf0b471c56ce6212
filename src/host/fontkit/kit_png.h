#pragma once

#include <string>

#include "host/picture/picture.h"

namespace zel::fontkit {

/// The colour type of a kit's picture, whatever its pixels are: engines refuse pages with a palette.
enum class KitPngType {
    /// Red, green, blue and straight alpha.
    kColoured,
    /// The alpha as opaque grey.
    kGrey,
};

/// A PNG file without a pixel aspect ratio, since a page is no picture of a screen. The same picture gives the same
/// bytes on every processor.
/// @throws std::runtime_error, std::bad_alloc
std::string KitPng(const picture::Picture& picture, KitPngType type);

}  // namespace zel::fontkit
