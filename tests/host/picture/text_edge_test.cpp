#include "host/picture/text_edge.h"

#include <algorithm>
#include <array>
#include <cstdlib>
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

/// The greatest coverage of a face at one of its positions along a vector.
int LargestAlong(const picture::Coverage& face, picture::EdgeVector vector, int x, int y) {
    const int steps = std::max(std::abs(vector.right), std::abs(vector.down));
    int largest = 0;
    for (int step = 1; step <= steps; ++step) {
        const int column = x - vector.right / steps * step, row = y - vector.down / steps * step;
        if (column < 0 || column >= face.width || row < 0 || row >= face.height) continue;
        largest = std::max<int>(largest, face.bytes[static_cast<std::size_t>(row * face.width + column)]);
    }
    return largest;
}

TEST(EdgeOfText, OfAShadowCoversEachPositionOfTheFace) {
    picture::Coverage face{0, 0, 5, 4, {}};
    for (unsigned n = 0; n < 20; ++n) face.bytes.push_back(static_cast<std::uint8_t>(n * 89));
    for (int angle = 0; angle < 360; angle += 45) {
        for (const int size : {1, 2, 3, 5, 8, 13}) {
            const picture::EdgeVector vector = picture::EdgeVectorOf(angle, size);
            const picture::Coverage shadow = picture::Extruded(face, vector);
            ASSERT_EQ(shadow.bytes.size(), static_cast<std::size_t>(shadow.width * shadow.height));
            for (int row = 0; row < shadow.height; ++row) {
                for (int column = 0; column < shadow.width; ++column) {
                    ASSERT_EQ(shadow.bytes[static_cast<std::size_t>(row * shadow.width + column)],
                              LargestAlong(face, vector, column + shadow.left, row - shadow.top))
                        << angle << ' ' << size << ' ' << column << ' ' << row;
                }
            }
        }
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
        {"a shadow up and to the left", picture::Extruded(face, {-2, -2}), -2, 3, {255, 0, 0, 0, 255, 0, 0, 0, 0}},
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
