#include "host/picture/composite.h"

#include <array>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "host/picture/bgra_row.h"
#include "host/picture/picture.h"

namespace zel::test {

namespace {

TEST(StraightAlpha, AgreesWithTheFormulaEverywhereAndAClearPixelLeavesTheGround) {
    EXPECT_EQ(picture::Over({9, 9, 9, 0}, {1, 2, 3, 4}), (picture::Rgba{1, 2, 3, 4}));
    EXPECT_EQ(picture::Over({9, 9, 9, 0}, {1, 2, 3, 0}), (picture::Rgba{1, 2, 3, 0}));
    for (unsigned source_alpha = 1; source_alpha < 256; source_alpha += 2) {
        for (unsigned ground_alpha = 0; ground_alpha < 256; ground_alpha += 3) {
            const double s = source_alpha / 255.0, g = ground_alpha / 255.0 * (1 - s);
            const picture::Rgba mixed = picture::Over({200, 30, 0, static_cast<std::uint8_t>(source_alpha)},
                                                      {10, 250, 255, static_cast<std::uint8_t>(ground_alpha)});
            ASSERT_NEAR(mixed.alpha, (s + g) * 255, 0.5001);
            ASSERT_NEAR(mixed.red, (200 * s + 10 * g) / (s + g), 0.5001);
            ASSERT_NEAR(mixed.green, (30 * s + 250 * g) / (s + g), 0.5001);
        }
    }
}

/// A view of 3 x 2 pixels, read back as one letter each: the red channel's, '.' for a clear pixel.
class SmallView : public testing::Test {
  protected:
    std::string Drawn() const {
        std::string text;
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < 3; ++column) {
                const std::uint8_t* pixel = &m_bytes[static_cast<std::size_t>(row * 3 + column) * 4];
                text += pixel[3] != 0 ? static_cast<char>(pixel[0]) : '.';
            }
            text += row == 0 ? "|" : "";
        }
        return text;
    }
    std::array<std::uint8_t, 24> m_bytes{};
    picture::PixelView m_view{m_bytes, 3, 2};
};

struct PlaceCase {
    const char* name;
    int x, y;
    const char* drawn;
};

TEST_F(SmallView, ClipsABitmapToItself) {
    // 2 x 2 pixels, bottom row first: "ab" above "cd".
    const std::vector<std::uint8_t> bitmap{1, 2, 'c', 255, 1, 2, 'd', 255, 1, 2, 'a', 255, 1, 2, 'b', 255};
    for (const PlaceCase& row : {
             PlaceCase{"inside", 1, 0, ".ab|.cd"},
             {"over the left edge", -1, 0, "b..|d.."},
             {"over the right edge", 2, 0, "..a|..c"},
             {"over the upper edge", 0, -1, "cd.|..."},
             {"over the lower edge", 0, 1, "...|ab."},
             {"left of the view", -2, 0, "...|..."},
             {"right of the view", 3, 0, "...|..."},
             {"below the view", 0, 2, "...|..."},
             {"far away", 100000, -100000, "...|..."},
         }) {
        m_bytes.fill(0);
        picture::BlendBitmap(m_view, row.x, row.y, {2, 2, bitmap});
        EXPECT_EQ(Drawn(), row.drawn) << row.name;
    }
}

TEST(BgraRow, IsBlendedOverEachPixelByEveryPath) {
    // Rows of every length up to 30, with a pixel between them. Some stretches of the source are clear or opaque, and
    // some of the ground are clear.
    std::vector<std::uint8_t> source;
    std::vector<picture::Rgba> ground;
    for (unsigned pair = 0; pair < 65536; ++pair) {
        const unsigned mixed = pair * 40503U & 0xFFFFU;
        const auto byte = [&](unsigned factor) { return static_cast<std::uint8_t>(mixed * factor >> 7); };
        const unsigned alpha = pair / 64 % 4 == 0 ? 0 : pair / 64 % 4 == 1 ? 255 : mixed & 0xFF;
        source.insert(source.end(), {byte(3), byte(7), byte(11), static_cast<std::uint8_t>(alpha)});
        ground.push_back({byte(5), byte(13), byte(17), static_cast<std::uint8_t>(pair / 32 % 3 != 0 ? mixed >> 8 : 0)});
    }
    for (const picture::BgraRowPath& path : picture::BgraRowPaths()) {
        std::vector<picture::Rgba> pixels = ground;
        for (std::size_t n = 0, width = 1; n + width < pixels.size(); n += width + 1, width = width % 30 + 1)
            path.blend(&source[4 * n], std::span(pixels).subspan(n, width));
        for (std::size_t n = 0, width = 1; n + width < pixels.size(); n += width + 1, width = width % 30 + 1) {
            for (std::size_t i = n; i < n + width; ++i) {
                const std::uint8_t* bgra = &source[4 * i];
                ASSERT_EQ(pixels[i], picture::Over({bgra[2], bgra[1], bgra[0], bgra[3]}, ground[i])) << path.name << i;
            }
            ASSERT_EQ(pixels[n + width], ground[n + width]) << path.name;
        }
    }
}

TEST_F(SmallView, BlendsAColourByItsCoverage) {
    const picture::Coverage coverage{.left = 2, .top = 3, .width = 2, .height = 2, .bytes = {255, 0, 128, 255}};
    picture::BlendCoverage(m_view, -1, 3, coverage, RGB('r', 'g', 'b'));
    EXPECT_EQ(Drawn(), ".r.|.rr");
    EXPECT_EQ(m_bytes[5], 'g');
    EXPECT_EQ(m_bytes[6], 'b');
    EXPECT_EQ(m_bytes[16 + 3], 128);
}

/// A view in the middle of a picture of 8 x 4 pixels, read back with the picture's margin.
TEST(PixelView, DrawsInItsPartOnly) {
    picture::Picture picture = picture::ClearPicture(8, 4);
    const auto drawn = [&] {
        std::string text;
        for (int y = 0; y < 4; ++y) {
            for (const picture::Rgba& pixel : picture.View().Row(y))
                text += pixel.red != 0 ? static_cast<char>(pixel.red) : '.';
            text += y < 3 ? "|" : "";
        }
        return text;
    };
    const picture::PixelView part = picture.View().Part({2, 1, 7, 3});
    picture::Fill(part.Part({-9, 1, 1, 9}), {'f', 0, 0, 255});
    EXPECT_EQ(drawn(), "........|........|..f.....|........");
    picture::FillCheckerboard(part, 2, {'a', 0, 0, 255}, {'b', 0, 0, 255});
    EXPECT_EQ(drawn(), "........|..aabba.|..aabba.|........");
    picture::FillCheckerboard(picture.View(), 3, {'a', 0, 0, 255}, {'b', 0, 0, 255});
    EXPECT_EQ(drawn(), "aaabbbaa|aaabbbaa|aaabbbaa|bbbaaabb");
    picture::Fill(picture.View(), {});
    picture::Picture source = picture::ClearPicture(3, 3);
    picture::Fill(source.View(), {'s', 0, 0, 255});
    picture::BlendPixels(part, 4, -1, source.View());
    EXPECT_EQ(drawn(), "........|......s.|......s.|........");
    picture::Blend(part, {255, 0, 0, 0});
    EXPECT_EQ(drawn(), "........|......s.|......s.|........");
    EXPECT_TRUE(part.Row(-1).empty() && part.Row(2).empty());
    EXPECT_TRUE(part.Part({5, 0, 9, 2}).Row(0).empty());
    EXPECT_THROW(picture::PixelView(picture.rgba, 8, 5), std::out_of_range);
}

}  // namespace

}  // namespace zel::test
