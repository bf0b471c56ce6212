#include <algorithm>
#include <tuple>

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

picture::Picture FilledPicture(int width, int height, picture::Rgba colour) {
    picture::Picture picture = picture::ClearPicture(width, height);
    for (int y = 0; y < height; ++y) std::ranges::fill(picture.View().Row(y), colour);
    return picture;
}

/// The columns and rows of a picture that are not clear.
picture::PixelBox DrawnBox(const picture::Picture& picture) {
    picture::PixelBox box{picture.width, picture.height, 0, 0};
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (PixelOf(picture, x, y).alpha == 0) continue;
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                   std::max(box.bottom, y + 1)};
        }
    }
    return box;
}

struct FrameCase {
    const char* size;
    exporter::Fit fit;
    int lines;
    /// Where the picture is in the frame.
    picture::PixelBox box;
};

TEST(Framed, PlacesThePictureInSquarePixelsAndLeavesTheRestClear) {
    using exporter::Fit;
    constexpr picture::Rgba kColour{250, 200, 10, 128};
    for (const FrameCase& row : {FrameCase{"1920x1080", Fit::kPillar, 486, {232, 0, 1687, 1080}},
                                 FrameCase{"1920x1080", Fit::kPillar, 576, {223, 0, 1696, 1080}},
                                 FrameCase{"600x1000", Fit::kPillar, 576, {0, 280, 600, 720}},
                                 FrameCase{"1024x576", Fit::kFill, 486, {0, 0, 1024, 576}},
                                 FrameCase{"1280x727", Fit::kPixel, 486, {280, 120, 1000, 606}}}) {
        SCOPED_TRACE(std::string(row.size) + " " + exporter::NameOf(row.fit));
        const exporter::ExportOptions options{.frame = exporter::ParseFrameSize(row.size), .fit = row.fit};
        const auto recording = Recorded(12, FilledPicture(720, row.lines, kColour));
        const std::string bytes = Exported("png", recording, options)["0012.png"];
        EXPECT_THAT(bytes, HasSubstr(std::string("pHYs\0\0\0\1\0\0\0\1\0", 13)));
        const picture::Picture framed = picture::DecodePng(bytes);
        EXPECT_EQ(exporter::TextOf({framed.width, framed.height}), row.size);
        const picture::PixelBox box = DrawnBox(framed);
        EXPECT_EQ(std::tie(box.left, box.top, box.right, box.bottom),
                  std::tie(row.box.left, row.box.top, row.box.right, row.box.bottom));
        EXPECT_EQ(PixelOf(framed, framed.width / 2, framed.height / 2), kColour);
    }
    EXPECT_THROW(Exported("tga", Recorded(), {.frame = {{720, 485}}, .fit = Fit::kPixel}), std::runtime_error);
}

TEST(FrameSize, IsWidthAndHeight) {
    for (const char* const text : {"", "x", "1920", "1920x", "x1080", "1920x1080x", "1920X1080", "0x1", "8193x1",
                                   "-1x5", "1 x1", "99999999999x1"}) {
        EXPECT_FALSE(exporter::ParseFrameSize(text)) << text;
    }
    EXPECT_EQ(exporter::ParseFrameSize("8192x1"), (exporter::FrameSize{8192, 1}));
}

TEST(PixelShape, IsStoredAsPngOrFfmpegReadIt) {
    using picture::AspectChunk;
    for (const auto& [chunk, stored] : {std::pair(AspectChunk::kPng, std::string("pHYs\0\0\0\x0B\0\0\0\x0A\0", 13)),
                                        {AspectChunk::kFfmpeg, std::string("pHYs\0\0\0\x0A\0\0\0\x0B\0", 13)}})
        EXPECT_THAT(Exported("png", Recorded(), {.aspect_chunk = chunk})["0012.png"], HasSubstr(stored));
    for (const auto& [name, bytes] : Exported("key-fill", Recorded(), {.aspect_chunk = AspectChunk::kNone})) {
        EXPECT_EQ(bytes.find("pHYs"), std::string::npos) << name;
        EXPECT_EQ(picture::DecodePng(bytes).width, 720);
    }
}

/// The pixels of a TGA file of type 10 with its rows from the top.
std::vector<std::uint8_t> DecodedRunLengths(const std::string& tga, std::size_t pixels) {
    std::vector<std::uint8_t> rgba;
    std::size_t at = 18;
    while (rgba.size() < 4 * pixels) {
        const auto head = static_cast<std::uint8_t>(tga.at(at++));
        const std::size_t count = (head & 0x7FU) + 1U;
        if (rgba.size() / 4 % 720 + count > 720) throw std::runtime_error("a packet continues in another row");
        for (std::size_t n = 0; n < count; ++n) {
            const std::size_t from = at + (head >= 0x80 ? 0 : 4 * n);
            for (const std::size_t sample : {2, 1, 0, 3})
                rgba.push_back(static_cast<std::uint8_t>(tga.at(from + sample)));
        }
        at += head >= 0x80 ? 4 : 4 * count;
    }
    return rgba;
}

TEST(Tga, IsCompressedByRunLengths) {
    picture::Picture picture = Colourful();
    for (int y = 100; y < 200; ++y)
        std::ranges::fill(picture.View().Row(y).subspan(0, static_cast<std::size_t>(y) * 3), picture::Rgba{});
    const std::string bytes = Exported("tga", Recorded(12, picture), {.run_lengths = true})["0012.tga"];
    EXPECT_EQ(bytes[2], 10);
    EXPECT_EQ(DecodedRunLengths(bytes, 720 * 486), picture.rgba);
    const auto clear = Recorded(12, picture::ClearPicture(720, 486));
    EXPECT_EQ(Exported("tga", clear, {.run_lengths = true})["0012.tga"].size(), 18U + 486 * 6 * 5 + 495 + 26);
}

TEST(ClearColour, OfTheGlyphContinuesItsColourAndStaysClear) {
    picture::Picture picture = picture::ClearPicture(720, 486);
    picture.View().Row(10)[10] = {200, 100, 50, 255};
    const picture::Picture bled = picture::DecodePng(
        Exported("png", Recorded(12, picture), {.clear_colour = exporter::ClearColour::kGlyph})["0012.png"]);
    EXPECT_EQ(PixelOf(bled, 10, 10), PixelOf(picture, 10, 10));
    for (const auto& [x, y] : {std::pair(9, 9), {11, 10}, {12, 12}, {8, 10}})
        EXPECT_EQ(PixelOf(bled, x, y), (picture::Rgba{200, 100, 50, 0})) << x << ' ' << y;
    for (const auto& [x, y] : {std::pair(13, 10), {10, 7}, {0, 0}}) EXPECT_EQ(PixelOf(bled, x, y), picture::Rgba{});
}

TEST(KeyAndFill, HasTheNamesThatTheProgramsWant) {
    using exporter::KeyNames;
    EXPECT_THAT(Exported("key-fill", Recorded(), {.fill_beside_png = true}),
                ElementsAre(Key("0012_fill.png"), Key("0012_fill_A.png")));
    EXPECT_THAT(Exported("key-fill", Recorded(), {.key_names = KeyNames::kMixer}),
                ElementsAre(Key("0012_fill.png"), Key("0012_key.png")));
    const std::string shaped = Exported("key-fill", Recorded(), {.premultiplied = true})["0012.png"];
    EXPECT_EQ(PixelOf(picture::DecodePng(shaped), 7, 100),
              (picture::Rgba{PixelOf(exporter::Premultiplied(Colourful()), 7, 100).red,
                             PixelOf(exporter::Premultiplied(Colourful()), 7, 100).green,
                             PixelOf(exporter::Premultiplied(Colourful()), 7, 100).blue, 255}));
}

}  // namespace

}  // namespace zel::test
