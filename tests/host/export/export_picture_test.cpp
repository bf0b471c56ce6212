#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/export/frame.h"
#include "host/export/premultiplied.h"
#include "host/export/recordings.h"

namespace zel::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Key;

picture::Rgba PixelOf(const picture::Picture& picture, int x, int y) {
    return picture.View().Row(y)[static_cast<std::size_t>(x)];
}

TEST(KeyAndFill, TogetherGiveThePicture) {
    const picture::Picture picture = Colourful();
    auto files = Exported("key-fill", Recorded());
    EXPECT_THAT(files, ElementsAre(Key("0012.png"), Key("0012_A.png")));
    const picture::Picture fill = picture::DecodePng(files["0012.png"]), key = picture::DecodePng(files["0012_A.png"]);
    for (int y = 0; y < 486; y += 5) {
        for (int x = 0; x < 720; ++x) {
            const picture::Rgba pixel = PixelOf(picture, x, y);
            ASSERT_EQ(PixelOf(key, x, y).red, pixel.alpha);
            const picture::Rgba opaque =
                pixel.alpha != 0 ? picture::Rgba{pixel.red, pixel.green, pixel.blue, 255} : picture::Rgba{0, 0, 0, 255};
            ASSERT_EQ(PixelOf(fill, x, y), opaque) << x << ' ' << y;
        }
    }
}

TEST(Png, IsStraightUnlessPremultiplied) {
    const picture::Picture picture = Colourful();
    EXPECT_EQ(picture::DecodePng(Exported("png", Recorded())["0012.png"]).rgba, picture.rgba);
    const picture::Picture multiplied =
        picture::DecodePng(Exported("png", Recorded(), {.premultiplied = true})["0012.png"]);
    for (std::size_t n = 0; n < picture.rgba.size(); ++n) {
        const int alpha = picture.rgba[n | 3];
        ASSERT_LE(multiplied.rgba[n], alpha);
        if (n % 4 != 3) {
            ASSERT_NEAR(multiplied.rgba[n] * 255, picture.rgba[n] * alpha, 127);
        }
    }
}

TEST(Tga, HasItsSizeOriginAndAlpha) {
    for (const bool premultiplied : {false, true}) {
        const std::string bytes = Exported("tga", Recorded(), {.premultiplied = premultiplied})["0012.tga"];
        const auto at = [&](std::size_t n) { return static_cast<std::uint8_t>(bytes.at(n)); };
        ASSERT_EQ(bytes.size(), 18U + 720 * 486 * 4 + 495 + 26);
        EXPECT_EQ(bytes.substr(0, 18), std::string("\0\0\2\0\0\0\0\0\0\0\0\0\xD0\x02\xE6\x01\x20\x28", 18));
        const int extension = at(bytes.size() - 26) | at(bytes.size() - 25) << 8 | at(bytes.size() - 24) << 16;
        ASSERT_EQ(extension, 18 + 720 * 486 * 4);
        EXPECT_EQ(at(bytes.size() - 26 - 495) | at(bytes.size() - 26 - 494) << 8, 495);
        EXPECT_EQ(at(bytes.size() - 26 - 1), premultiplied ? 4 : 3);
        EXPECT_EQ(bytes.substr(bytes.size() - 18), std::string("TRUEVISION-XFILE.\0", 18));
        const picture::Picture picture = premultiplied ? exporter::Premultiplied(Colourful()) : Colourful();
        for (std::size_t n = 0; n < picture.rgba.size(); n += 4) {
            const picture::Rgba pixel{at(18 + n + 2), at(18 + n + 1), at(18 + n), at(18 + n + 3)};
            ASSERT_EQ(pixel, PixelOf(picture, static_cast<int>(n / 4 % 720), static_cast<int>(n / 4 / 720)));
        }
    }
}

struct PlaceCase {
    const char* name;
    int width, height;
    VideoStandard standard;
    /// A pixel of the picture, and its position on the frame.
    int x, y;
    int frame_x, frame_y;
};

TEST(Placed, InTheMiddleOfTheFrame) {
    for (const PlaceCase& row : {PlaceCase{"of its size", 720, 576, VideoStandard::kPal, 0, 575, 0, 575},
                                 {"small", 300, 101, VideoStandard::kNtsc, 0, 60, 210, 252},
                                 {"too large", 800, 600, VideoStandard::kNtsc, 40, 56, 0, 0},
                                 {"too high alone", 700, 491, VideoStandard::kNtsc, 0, 2, 10, 0}}) {
        SCOPED_TRACE(row.name);
        const picture::Picture picture = Colourful(row.width, row.height);
        const picture::Picture frame = exporter::PlacedOnFrame(picture, row.standard);
        EXPECT_EQ(frame.width, 720);
        EXPECT_EQ(frame.height, ActiveLines(row.standard));
        EXPECT_EQ(PixelOf(frame, row.frame_x, row.frame_y), PixelOf(picture, row.x, row.y));
        if (row.frame_x > 0) {
            EXPECT_EQ(PixelOf(frame, row.frame_x - 1, row.frame_y), picture::Rgba{});
        }
    }
}

TEST(SquarePixels, HaveTheScreensWidthAndAreMarkedAsSquare) {
    for (const auto& [lines, width] : {std::pair(486, 655), std::pair(576, 785)}) {
        const std::string bytes = Exported("square", Recorded(12, Colourful(720, lines)))["0012_square.png"];
        EXPECT_EQ(picture::DecodePng(bytes).width, width);
        EXPECT_EQ(picture::DecodePng(bytes).height, lines);
        EXPECT_THAT(bytes, HasSubstr(std::string("pHYs\0\0\0\1\0\0\0\1\0", 13)));
    }
}

TEST(SquarePixels, HaveNoFringeOfTransparentPixelsAndKeepTheCentre) {
    picture::Picture picture{720, 486, {}};
    for (int n = 0; n < 720 * 486; ++n) {
        const bool visible = n % 720 < 360;
        for (const int value : {visible ? 250 : 0, visible ? 200 : 90, visible ? 10 : 255, visible ? 255 : 0}) {
            picture.rgba.push_back(static_cast<std::uint8_t>(value));
        }
    }
    const picture::Picture square = picture::DecodePng(Exported("square", Recorded(12, picture))["0012_square.png"]);
    for (int x = 0; x < square.width; ++x) {
        const picture::Rgba pixel = PixelOf(square, x, 200);
        EXPECT_EQ(pixel.alpha > 127, x <= 327) << x;  // the middle one of 655 is half covered
        if (pixel.alpha == 0) continue;
        EXPECT_EQ(pixel, (picture::Rgba{250, 200, 10, pixel.alpha})) << x;
    }
}

}  // namespace

}  // namespace zel::test
