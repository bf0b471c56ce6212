#include "host/picture/text_edge.h"

#include <array>
#include <utility>

#include <gtest/gtest.h>

#include "module/contract/records/edge.h"

namespace zel::test {

namespace {

TEST(EdgeOfText, FollowsTheDirection) {
    // Direction 0 is down and to the right, then clockwise.
    constexpr std::array<std::pair<int, int>, 8> kSigns{
        {{1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}, {1, 0}}};
    for (int direction = 0; direction < 8; ++direction) {
        const auto [right, down] = kSigns[static_cast<std::size_t>(direction)];
        const int length = right != 0 && down != 0 ? 7 : 10;  // ten pixels on the slant are seven each way
        const picture::EdgeVector vector = picture::EdgeVectorOf(EdgeAngle(direction), 10);
        EXPECT_EQ(vector.right, right * length) << direction;
        EXPECT_EQ(vector.down, down * length) << direction;
    }
}

TEST(EdgeOfText, MovesOrExtrudesTheFace) {
    using Bytes = std::vector<std::uint8_t>;
    const picture::Coverage face{0, 1, 1, 1, {255}};
    const struct {
        const char* name;
        picture::Coverage edge;
        int left, top;
        Bytes bytes;
    } rows[] = {
        {"an offset", picture::Shifted({5, 9, 1, 1, {200}}, {3, 4}), 8, 5, {200}},
        {"a solid shadow", picture::Extruded(face, {2, 2}), 0, 1, {0, 0, 0, 0, 255, 0, 0, 0, 255}},
        {"a shadow up and to the left", picture::Extruded(face, {-2, -1}), -2, 2, {255, 0, 0, 0, 255, 0}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.edge.bytes, row.bytes) << row.name;
        EXPECT_EQ(row.edge.left, row.left) << row.name;
        EXPECT_EQ(row.edge.top, row.top) << row.name;
    }
    EXPECT_TRUE(picture::Extruded({}, {2, 2}).bytes.empty());
}

}  // namespace

}  // namespace zel::test
