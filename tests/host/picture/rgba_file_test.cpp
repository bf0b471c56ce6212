#include "host/picture/rgba_file.h"

#include "host/host_disk.h"

namespace zel::test {

namespace {

using testing::HasSubstr;

/// 2 x 2 pixels: opaque red, half-transparent blue, transparent with a colour, and a colour above its alpha.
const files::StoredGlyph kFour{
    .width = 2, .height = 2, .pixels = {255, 0, 0, 255, 128, 128, 0, 0, 0, 9, 9, 9, 100, 0, 200, 50}};

TEST(RgbaFile, GivesItsPixelsTopRowFirstInStraightColours) {
    for (const std::uint32_t type : {714U, 717U}) {
        const picture::RgbaPicture rgba = picture::ConvertRgbaFile(files::WriteRgbaFile(type, kFour));
        ASSERT_TRUE(rgba.picture) << rgba.error;
        EXPECT_EQ(rgba.picture->width, 2);
        EXPECT_EQ(rgba.picture->height, 2);
        EXPECT_EQ(rgba.picture->rgba, (files::Bytes{255, 0, 0, 255, 0, 0, 255, 128, 0, 0, 0, 0, 128, 255, 0, 100}));
    }
}

TEST(RgbaFile, IsRefusedWhenItsPixelsAreIncomplete) {
    files::StoredGlyph wide = kFour, high = kFour, none = kFour, below = kFour, more = kFour, less = kFour;
    wide.width_word = 4098;
    wide.pixels.resize(4097 * 2 * 4);
    high.height_word = 3;
    none.width_word = 1;
    below.height_word = 0xFFFF;
    more.length = 29;
    less.length = 27;
    const std::pair<files::StoredGlyph, const char*> cases[] = {
        {wide, "4097 x 2 pixels, more than 4096"},
        {high, "too small for 2 x 3"},
        {none, "size is 0 x 2"},
        {below, "size is 2 x -1"},
        {more, "cut short by the file's end"},
        {less, "too small for 2 x 2"},
    };
    for (const auto& [glyph, error] : cases) {
        const picture::RgbaPicture rgba = picture::ConvertRgbaFile(files::WriteRgbaFile(714, glyph));
        EXPECT_FALSE(rgba.picture);
        EXPECT_THAT(rgba.error, HasSubstr(error));
    }
    EXPECT_EQ(picture::ConvertRgbaFile(files::WriteRgbaFile(702, kFour)).error, "it is not an RGBA file");
    EXPECT_THAT(picture::ReadRgbaFile("missing").error, HasSubstr("No such file"));
    const files::Bytes file = files::WriteRgbaFile(714, kFour);
    for (std::size_t n = 0; n < file.size(); ++n) {
        EXPECT_FALSE(picture::ConvertRgbaFile(std::span(file).first(n)).picture) << n;
    }
}

class RgbaImport : public HostDisk {};

TEST_F(RgbaImport, HasTheStandardOfTheHost) {
    samples::WriteWholeFile(Path("MESSAGES/.0001"), files::WriteRgbaFile(717, kFour));
    for (const VideoStandard standard : {VideoStandard::kNtsc, VideoStandard::kPal}) {
        m_request.host.standard = standard;
        EXPECT_EQ(Import().message.value().standard, standard);
    }
}

}  // namespace

}  // namespace zel::test
