#include "host/fontkit/trace_outline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace zel::fontkit {

namespace {

/// Half of the highest coverage.
constexpr double kHalf = 127.5;

/// The sides of a cell, whose corners are the centres of four pixels.
enum Side : std::uint8_t { kTop, kRight, kBottom, kLeft };

/// From one side of a cell to another, with the shape on the right.
struct Step {
    Side from, to;
};

/// The one or two steps through a cell. Bits of the index: 1 the upper left corner is inside, 2 the upper right, 4 the
/// lower right, 8 the lower left. Two opposite corners (5 and 10) are apart here, see kJoined.
struct Steps {
    int count = 0;
    std::array<Step, 2> steps{};
};
constexpr std::array<Steps, 16> kSteps{{
    {},
    {1, {{{kTop, kLeft}}}},
    {1, {{{kRight, kTop}}}},
    {1, {{{kRight, kLeft}}}},
    {1, {{{kBottom, kRight}}}},
    {2, {{{kTop, kLeft}, {kBottom, kRight}}}},
    {1, {{{kBottom, kTop}}}},
    {1, {{{kBottom, kLeft}}}},
    {1, {{{kLeft, kBottom}}}},
    {1, {{{kTop, kBottom}}}},
    {2, {{{kRight, kTop}, {kLeft, kBottom}}}},
    {1, {{{kRight, kBottom}}}},
    {1, {{{kLeft, kRight}}}},
    {1, {{{kTop, kRight}}}},
    {1, {{{kLeft, kTop}}}},
    {},
}};
/// Two opposite corners that are joined across the middle of the cell: for 5 and for 10.
constexpr std::array<Steps, 2> kJoined{{
    {2, {{{kTop, kRight}, {kBottom, kLeft}}}},
    {2, {{{kLeft, kTop}, {kRight, kBottom}}}},
}};

class Tracer {
  public:
    /// The plane gets a border of one clear pixel, so that every outline is closed.
    explicit Tracer(const CoveragePlane& plane)
        : m_plane(plane),
          m_columns(static_cast<std::size_t>(plane.width) + 2),
          m_rows(static_cast<std::size_t>(plane.height) + 2),
          m_next(m_columns * m_rows * 2, kNone) {
        const auto highest = std::ranges::max_element(plane.bytes);
        const double most = highest == plane.bytes.end() ? 0 : *highest;
        m_threshold = most > kHalf ? kHalf : most / 2;
    }

    std::vector<OutlineContour> Trace() {
        if (m_threshold <= 0) return {};
        for (std::size_t row = 0; row + 1 < m_rows; ++row) {
            for (std::size_t column = 0; column + 1 < m_columns; ++column) Connect(row, column);
        }
        std::vector<OutlineContour> contours;
        for (std::size_t start = 0; start < m_next.size(); ++start) {
            if (m_next[start] != kNone) contours.push_back(Follow(start));
        }
        return contours;
    }

  private:
    static constexpr std::uint32_t kNone = UINT32_MAX;

    /// The coverage at a position with the border.
    double At(std::size_t row, std::size_t column) const {
        if (row == 0 || column == 0 || row + 1 == m_rows || column + 1 == m_columns) return 0;
        return m_plane.bytes[(row - 1) * static_cast<std::size_t>(m_plane.width) + column - 1];
    }
    bool IsInside(double coverage) const noexcept { return coverage > m_threshold; }

    /// A side as a number: twice the number of its first corner, and 1 for one that goes down.
    std::size_t SideNumber(std::size_t row, std::size_t column, Side side) const noexcept {
        const bool down = side == kLeft || side == kRight;
        if (side == kRight) ++column;
        if (side == kBottom) ++row;
        return (row * m_columns + column) * 2 + (down ? 1 : 0);
    }

    void Connect(std::size_t row, std::size_t column) {
        const double corners[] = {At(row, column), At(row, column + 1), At(row + 1, column + 1), At(row + 1, column)};
        unsigned index = 0;
        for (unsigned corner = 0; corner < 4; ++corner) index |= IsInside(corners[corner]) ? 1U << corner : 0U;
        const bool is_joined =
            (index == 5 || index == 10) && IsInside((corners[0] + corners[1] + corners[2] + corners[3]) / 4);
        const Steps& steps = is_joined ? kJoined[index == 5 ? 0 : 1] : kSteps[index];
        for (int step = 0; step < steps.count; ++step) {
            const Step& way = steps.steps[static_cast<std::size_t>(step)];
            m_next[SideNumber(row, column, way.from)] = static_cast<std::uint32_t>(SideNumber(row, column, way.to));
        }
    }

    OutlinePoint PointOf(std::size_t side) const {
        const std::size_t row = side / 2 / m_columns, column = side / 2 % m_columns;
        const bool down = side % 2 != 0;
        const double from = At(row, column), to = down ? At(row + 1, column) : At(row, column + 1);
        const double part = (m_threshold - from) / (to - from);
        // The centre of the pixel in row and column 1 is at half a pixel.
        const double x = static_cast<double>(column) - 0.5, y = static_cast<double>(row) - 0.5;
        return down ? OutlinePoint{x, y + part} : OutlinePoint{x + part, y};
    }

    /// Each crossed side begins one step and ends one, so every walk comes back to its start.
    OutlineContour Follow(std::size_t start) {
        OutlineContour contour;
        for (std::size_t side = start; m_next[side] != kNone;) {
            contour.push_back(PointOf(side));
            side = std::exchange(m_next[side], kNone);
        }
        return contour;
    }

    const CoveragePlane& m_plane;
    const std::size_t m_columns, m_rows;
    double m_threshold = kHalf;
    /// By side, the side at which the step that begins there ends.
    std::vector<std::uint32_t> m_next;
};

double DistanceFrom(const OutlinePoint& point, const OutlinePoint& from, const OutlinePoint& to) noexcept {
    const double dx = to.x - from.x, dy = to.y - from.y;
    const double length = std::hypot(dx, dy);
    if (length == 0) return std::hypot(point.x - from.x, point.y - from.y);
    return std::abs(dy * (point.x - from.x) - dx * (point.y - from.y)) / length;
}

}  // namespace

std::vector<OutlineContour> TraceOutline(const CoveragePlane& plane) {
    return Tracer(plane).Trace();
}

// Douglas and Peucker's method, with a list instead of a recursion, since a contour may have very many points.
OutlineContour SimplifyContour(const OutlineContour& contour, double tolerance) {
    const std::size_t count = contour.size();
    if (count < 4) return contour;
    const auto distance_from_first = [&](std::size_t index) {
        return std::hypot(contour[index].x - contour[0].x, contour[index].y - contour[0].y);
    };
    std::size_t farthest = 0;
    for (std::size_t index = 1; index < count; ++index) {
        if (distance_from_first(index) > distance_from_first(farthest)) farthest = index;
    }
    std::vector<bool> is_kept(count, false);
    is_kept[0] = is_kept[farthest] = true;
    // The end `count` is the first point again.
    std::vector<std::pair<std::size_t, std::size_t>> parts{{0, farthest}, {farthest, count}};
    while (!parts.empty()) {
        const auto [first, last] = parts.back();
        parts.pop_back();
        double most = tolerance;
        std::size_t worst = 0;
        for (std::size_t index = first + 1; index < last; ++index) {
            const double distance = DistanceFrom(contour[index], contour[first], contour[last % count]);
            if (distance > most) {
                most = distance;
                worst = index;
            }
        }
        if (worst == 0) continue;
        is_kept[worst] = true;
        parts.emplace_back(first, worst);
        parts.emplace_back(worst, last);
    }
    OutlineContour simple;
    for (std::size_t index = 0; index < count; ++index) {
        if (is_kept[index]) simple.push_back(contour[index]);
    }
    return simple;
}

double AreaOf(const OutlineContour& contour) noexcept {
    double twice = 0;
    for (std::size_t index = 0; index < contour.size(); ++index) {
        const OutlinePoint& a = contour[index];
        const OutlinePoint& b = contour[(index + 1) % contour.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return twice / 2;
}

}  // namespace zel::fontkit
