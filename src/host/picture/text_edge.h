#pragma once

#include "host/picture/coverage.h"

namespace zel::picture {

/// Direction and distance of a shadow or an offset from its face, in pixels.
struct EdgeVector {
    int right = 0;
    int down = 0;
};

/// @param angle  degrees, 0 up and then clockwise in steps of 45.
/// @param size   length in pixels.
EdgeVector EdgeVectorOf(int angle, int size) noexcept;

/// The face, moved by the vector.
Coverage Shifted(const Coverage& face, EdgeVector vector);

/// The area that the face covers as it moves along the vector, without its first position, which would darken the
/// smooth outline on the lit side.
/// @param vector  in one of the eight directions of EdgeVectorOf.
Coverage Extruded(const Coverage& face, EdgeVector vector);

}  // namespace zel::picture
