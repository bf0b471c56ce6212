#include <algorithm>
#include <array>
#include <barrier>
#include <cstdlib>
#include <map>
#include <span>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stb/stb_image.h>

#include "host/picture/png_reader.h"
#include "host/picture/png_rows.h"
#include "host/picture/png_writer.h"
#include "qt_reader.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

picture::Picture Gradient(int height = 3) {
    picture::Picture picture = picture::ClearPicture(5, height);
    for (std::size_t n = 0; n < picture.rgba.size(); ++n) picture.rgba[n] = static_cast<std::uint8_t>(n * 4);
    return picture;
}

/// A picture whose pixels a function gives.
template <typename Pixel>
picture::Picture Drawn(int width, int height, Pixel&& pixel) {
    picture::Picture picture = picture::ClearPicture(width, height);
    for (int y = 0; y < height; ++y) {
        const auto row = picture.View().Row(y);
        for (int x = 0; x < width; ++x) row[static_cast<std::size_t>(x)] = pixel(x, y);
    }
    return picture;
}

picture::Rgba PixelOf(int red, int green, int blue, int alpha) {
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
    return {byte(red), byte(green), byte(blue), byte(alpha)};
}

struct PictureCase {
    const char* name;
    picture::Picture picture;
};

/// Pictures that encoders treat in different ways.
std::vector<PictureCase> Pictures() {
    unsigned random = 1;
    const auto noise = [&random] { return static_cast<int>((random = random * 1664525 + 1013904223) >> 24); };
    const auto smooth = [](int x, int y) { return PixelOf(x / 2, y / 2, (x + y) / 4, 255 - x / 4); };
    const auto sparse = [](int x, int y) {
        return y % 7 == 3 && x % 5 == 1 ? PixelOf(x * 7, y, 9, x | 1) : picture::Rgba{};
    };
    return {
        {"no row is clear", Gradient(486)},
        {"all rows are clear", picture::ClearPicture(720, 576)},
        {"one pixel", Drawn(1, 1, [](int, int) { return PixelOf(1, 2, 3, 4); })},
        {"clear rows between others", Drawn(33, 600, sparse)},
        {"gradual changes, which filters make shorter", Drawn(300, 200, smooth)},
        {"gradual changes from the left", Drawn(400, 64, [](int x, int) { return PixelOf(x / 8, x / 3, x / 5, 255); })},
        {"gradual changes below clear rows",
         Drawn(300, 64, [&](int x, int y) { return y < 30 ? picture::Rgba{} : smooth(x, y); })},
        {"noise, which nothing makes shorter",
         Drawn(701, 400, [&](int, int) { return PixelOf(noise(), noise(), noise(), noise()); })},
        {"256 colours", Drawn(256, 4, [](int x, int) { return PixelOf(x, 0, 0, 200); })},
        {"257 colours", Drawn(257, 2, [](int x, int) { return PixelOf(x, x / 256, 0, 255); })},
        {"opaque greys", Drawn(300, 3, [](int x, int) { return PixelOf(x, x, x, 255); })},
        {"greys with alpha", Drawn(300, 40, [](int x, int y) { return PixelOf(x, x, x, y * 6); })},
        {"black characters, clear without their alpha",
         Drawn(64, 64, [](int x, int y) { return PixelOf(0, 0, 0, y < 20 ? 0 : x * 4); })},
    };
}

/// What a reader makes of a pixel in a file of these channels.
picture::Rgba Shown(picture::Rgba pixel, picture::PngChannels channels) {
    if (channels == picture::PngChannels::kAlpha) return {pixel.alpha, pixel.alpha, pixel.alpha, 255};
    if (channels == picture::PngChannels::kColour) pixel.alpha = 255;
    return pixel;
}

/// Decodes with a library that shares nothing with the writer or with libpng.
std::vector<std::uint8_t> DecodedByStb(const std::string& png) {
    int width = 0, height = 0, channels = 0;
    stbi_uc* const pixels = stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(png.data()),
                                                  static_cast<int>(png.size()), &width, &height, &channels, 4);
    if (pixels == nullptr) return {};
    std::vector<std::uint8_t> bytes(pixels, pixels + picture::PixelBytes(width, height));
    stbi_image_free(pixels);
    return bytes;
}

/// Leaves a value in the memory that the next calls use for their variables.
[[gnu::noinline]] void FillStack(std::uint16_t value) {
    volatile std::uint16_t values[std::size_t{1} << 17];
    for (volatile std::uint16_t& each : values) each = value;
}

TEST(Png, IsReadBackToTheSamePixels) {
    using enum picture::PngChannels;
    for (const PictureCase& row : Pictures()) {
        for (const picture::PngChannels channels : {kColourAndAlpha, kColour, kAlpha}) {
            picture::Picture shown = row.picture;
            for (int y = 0; y < shown.height; ++y) {
                for (picture::Rgba& pixel : shown.View().Row(y)) pixel = Shown(pixel, channels);
            }
            for (const auto effort : {picture::PngEffort::kFast, picture::PngEffort::kSmall}) {
                for (const auto shape : {picture::PixelShape::kVideo, picture::PixelShape::kSquare}) {
                    // The shape is a chunk of its own, so one compression of each picture is enough of the slow effort.
                    if (effort == picture::PngEffort::kSmall && shape == picture::PixelShape::kSquare) continue;
                    SCOPED_TRACE(testing::Message()
                                 << row.name << ", channels " << static_cast<int>(channels) << ", shape "
                                 << static_cast<int>(shape) << ", effort " << static_cast<int>(effort));
                    const picture::PngForm form{channels, shape, effort};
                    const std::string png = picture::EncodePng(row.picture, form);
                    EXPECT_TRUE(picture::DecodePng(png).rgba == shown.rgba);
                    EXPECT_TRUE(DecodedByStb(png) == shown.rgba);
#ifdef ZELTRANS_TEST_QIMAGE
                    EXPECT_TRUE(DecodedByQt(png) == shown.rgba);
#endif
                    // A second picture of a thread is encoded with what the first one left, wherever it left it.
                    FillStack(9);
                    EXPECT_TRUE(picture::EncodePng(row.picture, form) == png);
                }
            }
        }
    }
}

TEST(Png, HasTheSameBytesWhereverItsEncoderIs) {
    // Each run of rows that aren't clear is compressed by itself.
    unsigned random = 1;
    const picture::Picture picture = Drawn(10, 4000, [&](int, int y) {
        random = random * 1664525 + 1013904223;
        return y % 4 == 0 ? picture::Rgba{} : PixelOf(y, y / 7, y / 3, static_cast<int>(random >> 24));
    });
    std::array<std::vector<std::string>, 8> files;
    std::barrier start(static_cast<std::ptrdiff_t>(files.size()));
    {
        // As many encoders as threads at once, each at an address of its own.
        std::vector<std::jthread> threads;
        for (auto& own : files) {
            threads.emplace_back([&] {
                start.arrive_and_wait();
                for (int n = 0; n < 20; ++n) own.push_back(picture::EncodePng(picture));
            });
        }
    }
    for (const auto& own : files)
        EXPECT_TRUE(std::ranges::all_of(own, [&](const std::string& file) { return file == files[0][0]; }));
}

TEST(RowChanges, AreThoseOfEachPixelFromItsNeighbours) {
    constexpr int kWidest = 11;
    std::vector<picture::Rgba> rows;
    for (unsigned n = 0; n < 2 * kWidest; ++n)
        rows.push_back(PixelOf(static_cast<int>(n * 23), 7, static_cast<int>(n * n % 8), n % 5 == 0 ? 255 : 200));
    const std::span all(rows), row = all.first(kWidest), above = all.last(kWidest);
    for (std::size_t width = 1; width <= kWidest; ++width) {
        picture::RowChanges wanted;
        for (std::size_t x = 1; x < width; ++x) {
            const auto change = [](picture::Rgba a, picture::Rgba b) {
                return std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue) +
                       std::abs(a.alpha - b.alpha);
            };
            const int left = change(row[x], row[x - 1]), up = change(row[x], above[x]), least = std::min(left, up);
            wanted += {least > 0 && least < 24 ? 1 : 0, left, up};
        }
        const picture::RowChanges changes = picture::ChangesOf(row.first(width), above.first(width));
        EXPECT_EQ(std::tie(changes.gradual, changes.from_left, changes.from_above),
                  std::tie(wanted.gradual, wanted.from_left, wanted.from_above))
            << width;
    }
}

TEST(Png, HasTheFewestSamplesThatHoldThePixelsIfItIsToBeSmall) {
    std::map<std::string, int> types;
    for (const PictureCase& row : Pictures()) {
        types[row.name] = picture::EncodePng(row.picture, {.effort = picture::PngEffort::kSmall})[25];
    }
    EXPECT_EQ(types["256 colours"], 3);
    EXPECT_EQ(types["257 colours"], 2);
    EXPECT_EQ(types["greys with alpha"], 4);
    EXPECT_EQ(types["noise, which nothing makes shorter"], 6);
}

TEST(Png, HasThePixelAspectRatioOfItsHeight) {
    // pHYs: pixels across and down for one length, no unit. A pixel of 10:11 fits 11 times across and 10 times down.
    using namespace std::string_literals;
    const std::pair<int, std::string> cases[] = {{486, "\x0B\0\0\0\x0A\0"s},
                                                 {576, "\x0B\0\0\0\x0C\0"s},
                                                 {300, "\x0B\0\0\0\x0A\0"s}};  // no standard's: that of NTSC
    for (const auto& [height, ratio] : cases) {
        EXPECT_THAT(picture::EncodePng(Gradient(height)), HasSubstr("\0\0\0\x09pHYs\0\0\0"s + ratio)) << height;
    }
}

TEST(Png, IsRefusedWhenItIsTruncated) {
    const std::string bytes = picture::EncodePng(Gradient());
    for (std::size_t size = 0; size + 16 < bytes.size(); ++size) {
        EXPECT_THROW(picture::DecodePng(std::string_view(bytes).substr(0, size)), std::runtime_error) << size;
    }
}

TEST(Png, IsRefusedBeforeAllocationWhenItIsTooLarge) {
    const picture::Picture wide = picture::ClearPicture(picture::kMaxPngSide + 1, 1);
    EXPECT_THAT([&] { picture::DecodePng(picture::EncodePng(wide)); },
                ThrowsMessage<std::runtime_error>(HasSubstr("8193 x 1 pixels")));
}

}  // namespace

}  // namespace zel::test
