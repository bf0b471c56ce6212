#include "host/picture/text_edge.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace zel::picture {

namespace {

/// Draws the face into `edge` at a position in it; the greater of the two coverages remains.
void Stamp(const Coverage& face, int left, int top, Coverage& edge) {
    for (int row = 0; row < face.height; ++row) {
        const std::uint8_t* source = face.bytes.data() + static_cast<std::ptrdiff_t>(row) * face.width;
        std::uint8_t* target = edge.bytes.data() + static_cast<std::ptrdiff_t>(top + row) * edge.width + left;
        for (int column = 0; column < face.width; ++column) target[column] = std::max(target[column], source[column]);
    }
}

/// Draws a coverage into itself, moved by a vector; the parts outside are cut off.
void Spread(Coverage& edge, EdgeVector vector) {
    const std::vector<std::uint8_t> before = edge.bytes;
    const int left = std::max(vector.right, 0), columns = edge.width - std::abs(vector.right);
    const int end = edge.height + std::min(vector.down, 0);
    for (int row = std::max(vector.down, 0); row < end; ++row) {
        const std::uint8_t* source =
            before.data() + static_cast<std::ptrdiff_t>(row - vector.down) * edge.width + left - vector.right;
        std::uint8_t* target = edge.bytes.data() + static_cast<std::ptrdiff_t>(row) * edge.width + left;
        for (int column = 0; column < columns; ++column) target[column] = std::max(target[column], source[column]);
    }
}

}  // namespace

EdgeVector EdgeVectorOf(int angle, int size) noexcept {
    static constexpr std::array<EdgeVector, 8> kDirections{
        {{0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}}};
    const EdgeVector direction = kDirections[static_cast<std::size_t>(angle / 45 & 7)];
    const bool diagonal = direction.right != 0 && direction.down != 0;
    const int length = static_cast<int>(std::lround(size * (diagonal ? std::sqrt(0.5) : 1.0)));
    return {direction.right * length, direction.down * length};
}

Coverage Shifted(const Coverage& face, EdgeVector vector) {
    Coverage edge = face;
    edge.left += vector.right;
    edge.top -= vector.down;
    return edge;
}

Coverage Extruded(const Coverage& face, EdgeVector vector) {
    const int steps = std::max(std::abs(vector.right), std::abs(vector.down));
    Coverage edge;
    if (steps == 0 || face.bytes.empty()) return edge;
    edge.width = face.width + std::abs(vector.right);
    edge.height = face.height + std::abs(vector.down);
    edge.left = face.left + std::min(vector.right, 0);
    edge.top = face.top - std::min(vector.down, 0);
    edge.bytes.assign(static_cast<std::size_t>(edge.width) * static_cast<std::size_t>(edge.height), 0);
    const EdgeVector step{vector.right / steps, vector.down / steps};
    Stamp(face, step.right - std::min(vector.right, 0), step.down - std::min(vector.down, 0), edge);
    // Each pass doubles the positions that are drawn, so a long shadow takes little longer than a short one.
    for (int drawn = 1; drawn < steps;) {
        const int more = std::min(drawn, steps - drawn);
        Spread(edge, {step.right * more, step.down * more});
        drawn += more;
    }
    return edge;
}

}  // namespace zel::picture
