#pragma once

#include "samples/run_codes.h"

/// Draws the edges of characters: border, drop shadow and offset.
namespace zel::samples {

enum class EdgeType : std::uint8_t { kNone = 0, kBorder = 1, kDropShadow = 2, kOffset = 3 };

struct Edge {
    EdgeType type = EdgeType::kNone;
    unsigned direction = 0;  ///< 0 down and to the right, then clockwise in steps of 45 degrees; a border has none
    unsigned size = 0;       ///< pixels
};

/// How far an edge reaches beyond the face on each side, in pixels.
struct EdgeReach {
    unsigned left = 0, right = 0, above = 0, below = 0;
};
EdgeReach ReachOf(const Edge& edge);

/// Lines that an edge adds to a font's height: twice the size for a border, else the size.
unsigned EdgeHeight(const Edge& edge);

/// The edge of a face, in a coverage of the face's size: the face has to leave room for the edge's reach around it.
/// A drop shadow is drawn out solid from the face; an offset is the face once more, moved.
Coverage DrawEdge(const Coverage& face, const Edge& edge);

}  // namespace zel::samples
