#pragma once

#include <cstdint>

namespace zel {

/// edge_type of a font; stored values. Types above 3 have no edge.
enum class EdgeType : int { kNone = 0, kBorder = 1, kShadow = 2, kOffset = 3 };

/// Degrees of a font's 4-bit edge direction.
constexpr int EdgeAngle(int direction) noexcept {
    return direction >= 0 && direction < 8 ? (direction * 45 + 135) % 360 : 135;
}
static_assert(EdgeAngle(0) == 135 && EdgeAngle(4) == 315 && EdgeAngle(5) == 0 && EdgeAngle(7) == 90 &&
              EdgeAngle(8) == 135);

/// Part of a font's height, in pixels, that its edge occupies, in whatever direction. A border is on both sides of a
/// glyph.
constexpr int EdgeHeight(int edge_type, int edge_size) noexcept {
    switch (EdgeType{edge_type}) {
        case EdgeType::kBorder:
            return static_cast<std::uint16_t>(2 * edge_size);
        case EdgeType::kShadow:
        case EdgeType::kOffset:
            return edge_size;
        default:
            return 0;
    }
}

/// True for the edge types that draw one.
constexpr bool HasEdge(int edge_type) noexcept {
    return EdgeType{edge_type} >= EdgeType::kBorder && EdgeType{edge_type} <= EdgeType::kOffset;
}

}  // namespace zel
