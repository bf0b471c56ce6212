#pragma once

#include "files/run_codes.h"

/// Draws the edges of characters: border, drop shadow and offset.
namespace zel::samples {

enum class EdgeType : std::uint8_t { kNone = 0, kBorder = 1, kDropShadow = 2, kOffset = 3 };

struct Edge {
    EdgeType type = EdgeType::kNone;
    /// 0 to the lower right, then clockwise in steps of 45 degrees; not used for a border.
    unsigned direction = 0;
    /// In pixels.
    unsigned size = 0;
};

/// How far an edge extends beyond the face on each side, in pixels.
struct EdgeExtent {
    unsigned left = 0, right = 0, above = 0, below = 0;
};
EdgeExtent ExtentOf(const Edge& edge);

/// Lines that an edge adds to a font's height: twice the size for a border, otherwise the size.
unsigned EdgeHeight(const Edge& edge);

/// The edge of a face, in a coverage of the face's size.
/// @param face  has space for the edge around it, see ExtentOf.
/// @return for a drop shadow the face extruded along its direction; for an offset the displaced face.
files::Coverage DrawEdge(const files::Coverage& face, const Edge& edge);

}  // namespace zel::samples
