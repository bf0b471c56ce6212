#pragma once

#include "host/picture/picture.h"

namespace zel::exporter {

/// Pixels that the colour of a glyph is continued beyond its edge; filters that scale reach that far.
inline constexpr int kBleed = 2;

/// The picture with the colour of the nearest drawn pixels in the clear ones beside them, which stay clear.
picture::Picture WithBleed(picture::Picture picture);

}  // namespace zel::exporter
