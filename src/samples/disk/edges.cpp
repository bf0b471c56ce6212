#include "samples/disk/edges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace zel::samples {
namespace {

struct Step {
    int x = 0, y = 0;
};

/// The displacement of a shadow or an offset.
Step DisplacementOf(const Edge& edge) {
    constexpr std::array<Step, 8> kDirections{{{1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}, {1, 0}}};
    const Step direction = kDirections[edge.direction % 8];
    const bool diagonal = direction.x != 0 && direction.y != 0;
    const int length = static_cast<int>(std::lround(edge.size * (diagonal ? std::sqrt(0.5) : 1.0)));
    return {direction.x * length, direction.y * length};
}

/// Adds the face to `edge`, displaced by `step`, at a strength from 0 to 1. The greater coverage is kept.
void Stamp(const files::Coverage& face, Step step, double strength, files::Coverage& edge) {
    for (unsigned y = 0; y < face.height; ++y) {
        const int to_y = static_cast<int>(y) + step.y;
        if (to_y < 0 || to_y >= static_cast<int>(face.height)) continue;
        for (unsigned x = 0; x < face.width; ++x) {
            const int to_x = static_cast<int>(x) + step.x;
            if (to_x < 0 || to_x >= static_cast<int>(face.width)) continue;
            auto& target = edge.At(static_cast<unsigned>(to_x), static_cast<unsigned>(to_y));
            target = std::max(target, static_cast<std::uint8_t>(std::lround(face.At(x, y) * strength)));
        }
    }
}

void StampBorder(const files::Coverage& face, int size, files::Coverage& edge) {
    for (int y = -size; y <= size; ++y) {
        for (int x = -size; x <= size; ++x) {
            const double strength = std::clamp(size + 1.0 - std::hypot(x, y), 0.0, 1.0);
            if (strength > 0) Stamp(face, {x, y}, strength, edge);
        }
    }
}

/// The face itself isn't part of a shadow: it would darken the smooth outline on the lit side.
void StampShadow(const files::Coverage& face, Step displacement, files::Coverage& edge) {
    const int steps = std::max(std::abs(displacement.x), std::abs(displacement.y));
    for (int n = 1; n <= steps; ++n) Stamp(face, {displacement.x * n / steps, displacement.y * n / steps}, 1.0, edge);
}

}  // namespace

EdgeExtent ExtentOf(const Edge& edge) {
    if (edge.type == EdgeType::kNone) return {};
    if (edge.type == EdgeType::kBorder) return {edge.size, edge.size, edge.size, edge.size};
    const Step displacement = DisplacementOf(edge);
    const auto beyond = [](int distance) { return static_cast<unsigned>(std::max(distance, 0)); };
    return {beyond(-displacement.x), beyond(displacement.x), beyond(-displacement.y), beyond(displacement.y)};
}

unsigned EdgeHeight(const Edge& edge) {
    if (edge.type == EdgeType::kNone) return 0;
    return edge.type == EdgeType::kBorder ? 2 * edge.size : edge.size;
}

files::Coverage DrawEdge(const files::Coverage& face, const Edge& edge) {
    files::Coverage drawn{face.width, face.height, files::Bytes(face.alpha.size(), 0)};
    switch (edge.type) {
        case EdgeType::kNone:
            break;
        case EdgeType::kBorder:
            StampBorder(face, static_cast<int>(edge.size), drawn);
            break;
        case EdgeType::kDropShadow:
            StampShadow(face, DisplacementOf(edge), drawn);
            break;
        case EdgeType::kOffset:
            Stamp(face, DisplacementOf(edge), 1.0, drawn);
            break;
    }
    return drawn;
}

}  // namespace zel::samples
