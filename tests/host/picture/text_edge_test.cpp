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

TEST(EdgeOfText, OfAnOffsetIsTheFaceMoved) {
    const picture::Coverage moved = picture::Shifted({5, 9, 1, 1, {200}}, {3, 4});
    EXPECT_EQ(moved.left, 8);
    EXPECT_EQ(moved.top, 5);
    EXPECT_EQ(moved.bytes, std::vector<std::uint8_t>{200});
}

TEST(EdgeOfText, OfAShadowIsSolid) {
    const picture::Coverage shadow = picture::Extruded({0, 1, 1, 1, {255}}, {2, 2});
    EXPECT_EQ(shadow.left, 0);
    EXPECT_EQ(shadow.top, 1);
    EXPECT_EQ(shadow.bytes, (std::vector<std::uint8_t>{0, 0, 0, 0, 255, 0, 0, 0, 255}));
    const picture::Coverage up = picture::Extruded({0, 1, 1, 1, {255}}, {-2, -1});
    EXPECT_EQ(up.left, -2);
    EXPECT_EQ(up.top, 2);
    EXPECT_EQ(up.bytes, (std::vector<std::uint8_t>{255, 0, 0, 0, 255, 0}));
}

TEST(EdgeOfText, OfAnEmptyFaceIsEmpty) {
    EXPECT_TRUE(picture::Extruded({}, {2, 2}).bytes.empty());
    EXPECT_TRUE(picture::Shifted({}, {2, 2}).bytes.empty());
}

}  // namespace

}  // namespace zel::test
