#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/picture/png_reader.h"
#include "host/picture/png_writer.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

picture::Picture Gradient(int height = 3) {
    picture::Picture picture = picture::ClearPicture(5, height);
    for (std::size_t n = 0; n < picture.rgba.size(); ++n) picture.rgba[n] = static_cast<std::uint8_t>(n * 4);
    return picture;
}

TEST(Png, DecodesToTheChannelsThatItContains) {
    const picture::Picture picture = Gradient();
    const picture::Picture decoded = picture::DecodePng(picture::EncodePng(picture));
    const picture::Picture colour = picture::DecodePng(picture::EncodePng(picture, {picture::PngChannels::kColour}));
    const picture::Picture alpha = picture::DecodePng(picture::EncodePng(picture, {picture::PngChannels::kAlpha}));
    EXPECT_EQ(decoded.rgba, picture.rgba);
    for (std::size_t n = 0; n < picture.rgba.size(); ++n) {
        EXPECT_EQ(colour.rgba[n], n % 4 == 3 ? 255 : picture.rgba[n]);
        EXPECT_EQ(alpha.rgba[n], n % 4 == 3 ? 255 : picture.rgba[n | 3]);
    }
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
