#include "host/picture/text_edge.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace zel::picture {

namespace {

/// Lays the face over `edge` at a place in it; the stronger of the two stays.
void Stamp(const Coverage& face, int left, int top, Coverage& edge) {
    for (int row = 0; row < face.height; ++row) {
        const std::uint8_t* source = face.bytes.data() + static_cast<std::ptrdiff_t>(row) * face.width;
        std::uint8_t* target = edge.bytes.data() + static_cast<std::ptrdiff_t>(top + row) * edge.width + left;
        for (int column = 0; column < face.width; ++column) target[column] = std::max(target[column], source[column]);
    }
}

}  // namespace

EdgeWay WayOfEdge(int angle, int size) noexcept {
    static constexpr std::array<EdgeWay, 8> kDirections{
        {{0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}}};
    const EdgeWay direction = kDirections[static_cast<std::size_t>(angle / 45 & 7)];
    const bool diagonal = direction.right != 0 && direction.down != 0;
    const int length = static_cast<int>(std::lround(size * (diagonal ? std::sqrt(0.5) : 1.0)));
    return {direction.right * length, direction.down * length};
}

Coverage MovedBy(const Coverage& face, EdgeWay way) {
    Coverage edge = face;
    edge.left += way.right;
    edge.top -= way.down;
    return edge;
}

Coverage DrawnOutAlong(const Coverage& face, EdgeWay way) {
    const int steps = std::max(std::abs(way.right), std::abs(way.down));
    Coverage edge;
    if (steps == 0 || face.bytes.empty()) return edge;
    edge.width = face.width + std::abs(way.right);
    edge.height = face.height + std::abs(way.down);
    edge.left = face.left + std::min(way.right, 0);
    edge.top = face.top - std::min(way.down, 0);
    edge.bytes.assign(static_cast<std::size_t>(edge.width) * static_cast<std::size_t>(edge.height), 0);
    for (int step = 1; step <= steps; ++step) {
        const int right = way.right * step / steps;
        const int down = way.down * step / steps;
        Stamp(face, right - std::min(way.right, 0), down - std::min(way.down, 0), edge);
    }
    return edge;
}

}  // namespace zel::picture
