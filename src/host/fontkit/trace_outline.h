#pragma once

#include <vector>

#include "host/fontkit/font_art.h"

namespace zel::fontkit {

/// A point in pixels of a plane, from its upper left corner. The centre of the first pixel is (0.5, 0.5).
struct OutlinePoint {
    double x = 0, y = 0;
};
/// A closed line. The shape is on its right, seen with y downwards: outer contours run clockwise, holes the other way.
using OutlineContour = std::vector<OutlinePoint>;

/// Traces the outlines of a shape: the lines on which its coverage is half of the highest one possible, by marching
/// squares with linear interpolation between the centres of pixels. A shape that nowhere covers half of a pixel is
/// traced at half of its own highest coverage, so that it doesn't vanish.
std::vector<OutlineContour> TraceOutline(const CoveragePlane& plane);

/// Leaves out points that are within a distance of the line through the remaining ones.
/// @param tolerance  in pixels.
OutlineContour SimplifyContour(const OutlineContour& contour, double tolerance);

/// The area that a contour encloses, in pixels: above 0 for an outer contour, below 0 for a hole.
double AreaOf(const OutlineContour& contour) noexcept;

}  // namespace zel::fontkit
