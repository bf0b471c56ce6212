#include "host/picture/rgba_file.h"

#include "host/host_disk.h"
#include "host/picture/picture_composer.h"

namespace zel::test {

namespace {

using testing::HasSubstr;

/// 2 x 2 pixels: opaque red, half-transparent blue, transparent with a colour, and a colour above its alpha.
const samples::StoredGlyph kFour{
    .width = 2, .height = 2, .pixels = {255, 0, 0, 255, 128, 128, 0, 0, 0, 9, 9, 9, 100, 0, 200, 50}};

TEST(RgbaFile, GivesItsPixelsTopRowFirstInStraightColours) {
    for (const std::uint32_t type : {714U, 717U}) {
        const picture::RgbaPicture rgba = picture::ConvertRgbaFile(samples::WriteRgbaFile(type, kFour));
        ASSERT_TRUE(rgba.picture) << rgba.error;
        EXPECT_EQ(rgba.picture->width, 2);
        EXPECT_EQ(rgba.picture->height, 2);
        EXPECT_EQ(rgba.picture->rgba, (samples::Bytes{255, 0, 0, 255, 0, 0, 255, 128, 0, 0, 0, 0, 128, 255, 0, 100}));
    }
}

TEST(RgbaFile, IsRefusedWhenItsPixelsAreIncomplete) {
    samples::StoredGlyph wide = kFour, high = kFour, none = kFour, below = kFour, more = kFour, less = kFour;
    wide.width_word = 4098;
    wide.pixels.resize(4097 * 2 * 4);
    high.height_word = 3;
    none.width_word = 1;
    below.height_word = 0xFFFF;
    more.length = 29;
    less.length = 27;
    const std::pair<samples::StoredGlyph, const char*> cases[] = {
        {wide, "4097 x 2 pixels, more than 4096"},
        {high, "too small for 2 x 3"},
        {none, "size is 0 x 2"},
        {below, "size is 2 x -1"},
        {more, "cut short by the file's end"},
        {less, "too small for 2 x 2"},
    };
    for (const auto& [glyph, error] : cases) {
        const picture::RgbaPicture rgba = picture::ConvertRgbaFile(samples::WriteRgbaFile(714, glyph));
        EXPECT_FALSE(rgba.picture);
        EXPECT_THAT(rgba.error, HasSubstr(error));
    }
    EXPECT_EQ(picture::ConvertRgbaFile(samples::WriteRgbaFile(702, kFour)).error, "it is not an RGBA file");
    const samples::Bytes file = samples::WriteRgbaFile(714, kFour);
    for (std::size_t n = 0; n < file.size(); ++n) {
        EXPECT_FALSE(picture::ConvertRgbaFile(std::span(file).first(n)).picture) << n;
    }
}

class RgbaImport : public HostDisk {};

TEST_F(RgbaImport, HasTheStandardOfTheHost) {
    samples::WriteWholeFile(Path("MESSAGES/.0001"), samples::WriteRgbaFile(717, kFour));
    for (const VideoStandard standard : {VideoStandard::kNtsc, VideoStandard::kPal}) {
        m_request.host.standard = standard;
        EXPECT_EQ(Import().message.value().standard, standard);
    }
}

TEST_F(RgbaImport, GivesThePictureOrTheReasonWhyThereIsNone) {
    samples::StoredGlyph cut = kFour;
    cut.length = 1000;
    samples::WriteWholeFile(Path("MESSAGES/.0001"), samples::WriteRgbaFile(714, kFour));
    picture::PictureComposer composer;
    Import({&composer});
    EXPECT_EQ(composer.TakePicture().value().rgba[0], 255);
    m_request.rgba = run::RgbaAnswer::kCancel;
    Import({&composer});
    EXPECT_FALSE(composer.TakePicture());
    m_request.rgba = run::RgbaAnswer::kBackground;
    samples::WriteWholeFile(Path("MESSAGES/.0001"), samples::WriteRgbaFile(714, cut));
    Import({&composer});
    EXPECT_FALSE(composer.TakePicture());
    EXPECT_EQ(composer.RgbaError(), "the picture is cut short by the file's end");
    EXPECT_THAT(picture::ReadRgbaFile(Path("missing")).error, HasSubstr("No such file"));
}

}  // namespace

}  // namespace zel::test
