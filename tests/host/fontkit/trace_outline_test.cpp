#include "host/fontkit/trace_outline.h"

#include <cmath>

#include <gtest/gtest.h>

namespace zel::test {

namespace {

using fontkit::AreaOf;
using fontkit::CoveragePlane;
using fontkit::OutlineContour;

/// A plane of rows in which '#' is covered, '.' is not, and a digit is a level of tenths.
CoveragePlane PlaneOf(const std::vector<std::string>& rows) {
    CoveragePlane plane{static_cast<int>(rows.front().size()), static_cast<int>(rows.size()), {}};
    for (const std::string& row : rows) {
        for (const char c : row)
            plane.bytes.push_back(c == '#' ? 255 : c == '.' ? 0 : static_cast<std::uint8_t>((c - '0') * 51 / 2));
    }
    return plane;
}

struct TraceCase {
    const char* name;
    std::vector<std::string> rows;
    /// Areas of the contours in pixels, in the order in which they are met.
    std::vector<double> areas;
};

void PrintTo(const TraceCase& trace, std::ostream* out) {
    *out << trace.name;
}

class TracedShape : public testing::TestWithParam<TraceCase> {};

// A corner of a pixel is cut off by a triangle of an eighth of a pixel, and one of a hole likewise.
TEST_P(TracedShape, HasItsAreaAndItsHoles) {
    std::vector<double> areas;
    for (const OutlineContour& contour : fontkit::TraceOutline(PlaneOf(GetParam().rows))) {
        areas.push_back(AreaOf(contour));
        EXPECT_NEAR(AreaOf(fontkit::SimplifyContour(contour, 1e-9)), areas.back(), 1e-6);
    }
    ASSERT_EQ(areas.size(), GetParam().areas.size());
    for (std::size_t index = 0; index < areas.size(); ++index) EXPECT_NEAR(areas[index], GetParam().areas[index], 1e-6);
}

INSTANTIATE_TEST_SUITE_P(
    Each, TracedShape,
    testing::Values(TraceCase{"nothing", {"...", "..."}, {}}, TraceCase{"a_pixel", {"...", ".#.", "..."}, {0.5}},
                    TraceCase{"a_block_to_the_borders", {"####", "####", "####"}, {12 - 0.5}},
                    TraceCase{"a_ring", {"#####", "#...#", "#...#", "#####"}, {20 - 0.5, -(6 - 0.5)}},
                    TraceCase{"two_blocks", {"##.##", "##.##"}, {4 - 0.5, 4 - 0.5}},
                    // The mean of the four is half covered, which is not inside.
                    TraceCase{"two_corners_apart", {"##..", "##..", "..##", "..##"}, {4 - 0.5, 4 - 0.5}},
                    // (0, 1/2), (1/2, 0), (4/3, 1/2), (3/2, 2/3) and the same from the other corner.
                    TraceCase{"two_corners_joined", {"#4", "4#"}, {37.0 / 18}},
                    TraceCase{"a_faint_block", {"44", "44"}, {4 - 0.5}}),
    [](const auto& trace) { return std::string(trace.param.name); });

TEST(TraceOutline, FollowsPartlyCoveredPixelsBetweenTheirCentres) {
    const CoveragePlane plane{3, 1, {255, 170, 0}};
    double right = 0;
    const std::vector<OutlineContour> contours = fontkit::TraceOutline(plane);
    for (const fontkit::OutlinePoint& point : contours.at(0)) right = std::max(right, point.x);
    // Half is a quarter of the way from the second centre to the third.
    EXPECT_NEAR(right, 1.5 + (170 - 127.5) / 170, 1e-9);
}

TEST(TraceOutline, LeavesOutPointsNearTheLineAndNoOthers) {
    OutlineContour circle;
    for (int step = 0; step < 400; ++step)
        circle.push_back({20 * std::cos(step * std::acos(-1) / 200), 20 * std::sin(step * std::acos(-1) / 200)});
    const OutlineContour simple = fontkit::SimplifyContour(circle, 0.04);
    EXPECT_LT(simple.size(), 90U);
    EXPECT_NEAR(AreaOf(simple), AreaOf(circle), 0.04 * 2 * 20 * 3.15);
    for (std::size_t index = 0; index < simple.size(); ++index) {
        const auto& a = simple[index];
        const auto& b = simple[(index + 1) % simple.size()];
        EXPECT_GE(std::hypot((a.x + b.x) / 2, (a.y + b.y) / 2), 20 - 0.041);
    }
}

}  // namespace

}  // namespace zel::test
