#pragma once

#include "host/picture/picture.h"

namespace zel::picture {

/// The picture in another size. Colours are weighted with their alpha, so that a transparent pixel's colour leaves no
/// fringe.
/// @param width, height     size of the result, at least 1.
/// @param x_scale, y_scale  pixels of the result for one of the picture, across and down. The picture keeps its centre;
///                          its edges are repeated or cut off where the result is larger or smaller than the scale.
/// @throws std::bad_alloc
Picture Resampled(const Picture& picture, int width, int height, double x_scale, double y_scale);

/// The picture stretched to another size.
/// @throws std::bad_alloc
Picture Stretched(const Picture& picture, int width, int height);

}  // namespace zel::picture
