#pragma once

#include "host/picture/text_face.h"

namespace zel::picture {

/// Pixels that a shadow or an offset lies right of and below its face.
struct EdgeWay {
    int right = 0;
    int down = 0;
};

/// The way of an edge: the angle is in degrees, 0 up and then clockwise in steps of 45.
EdgeWay WayOfEdge(int angle, int size) noexcept;

/// The face once more, moved.
Coverage MovedBy(const Coverage& face, EdgeWay way);

/// The face drawn out solid all along the way. The face's own place isn't part of it: it would darken the smooth
/// outline on the lit side.
Coverage DrawnOutAlong(const Coverage& face, EdgeWay way);

}  // namespace zel::picture
