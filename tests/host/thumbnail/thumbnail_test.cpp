#include "host/thumbnail/thumbnail.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <gmock/gmock.h>

#include "host/host_disk.h"
#include "host/thumbnail/grounds.h"

namespace zel::test {

namespace {

using picture::Rgba;

class Thumbnail : public HostDisk {
  protected:
    /// The pixel of a thumbnail of 720 x 491 pixels at a place of the message's picture.
    static Rgba At(const picture::Picture& thumbnail, int x, int y) {
        return thumbnail.View().Row(y * thumbnail.height / 486)[static_cast<std::size_t>(x)];
    }
    static int CountOf(const picture::Picture& thumbnail, Rgba colour) {
        int count = 0;
        for (int y = 0; y < thumbnail.height; ++y)
            count += static_cast<int>(std::ranges::count(thumbnail.View().Row(y), colour));
        return count;
    }
    static bool IsGround(Rgba pixel) {
        const auto near = [&](Rgba ground) { return std::abs(pixel.red - ground.red) < 12 && pixel.red < pixel.blue; };
        return near(thumbnail::kDarkSquare) || near(thumbnail::kLightSquare) ||
               (pixel.red > thumbnail::kDarkSquare.red && pixel.red < thumbnail::kLightSquare.red);
    }
};

TEST_F(Thumbnail, OfAMessageHasSquarePixelsAndTheWantedSide) {
    for (const auto& [pal, height] : {std::pair{false, 190}, std::pair{true, 188}}) {
        files::MessageFile message = OneRow("A");
        if (pal) message.section_flags = 0x8000;
        WriteMessage(message);
        const picture::Picture small = thumbnail::MakeThumbnail(Path("MESSAGES/.0001"), 256);
        EXPECT_EQ(small.width, 256);
        EXPECT_EQ(small.height, height);
    }
}

TEST_F(Thumbnail, HasTheFontsOfTheDiskOrBarsInTheirPlace) {
    WriteMessage(OneRow("AA"));
    WriteFont(BlockFont());
    const std::string message = Path("MESSAGES/.0001"), alone = Path("a message.0001");
    std::filesystem::copy_file(message, alone);
    const picture::Picture with = thumbnail::MakeThumbnail(message, 720);
    const picture::Picture without = thumbnail::MakeThumbnail(alone, 720);
    EXPECT_NE(with.rgba, without.rgba);
    // The first character is at 50 + 7, its baseline 10 lines below the row; a glyph of the font is 2 lines high there.
    EXPECT_FALSE(IsGround(At(without, 60, 105)));
    EXPECT_TRUE(IsGround(At(with, 60, 104)));
    EXPECT_TRUE(IsGround(At(without, 60, 116)));
    std::filesystem::remove(Path("MACHINE/.0001"));
    EXPECT_EQ(thumbnail::MakeThumbnail(message, 720).rgba, without.rgba);
}

TEST_F(Thumbnail, ShowsTheNamedFileAndNotTheOneOfItsNumber) {
    WriteMessage(OneRow("A"));
    WriteFont(BlockFont());
    samples::WriteWholeFile(Path("MESSAGES/NEWS.0001"), files::WriteMessage(OneRow("AAAAAA")));
    EXPECT_TRUE(thumbnail::MakeThumbnail(Path("MESSAGES/.0001"), 720).rgba !=
                thumbnail::MakeThumbnail(Path("MESSAGES/NEWS.0001"), 720).rgba);
}

TEST_F(Thumbnail, OfAFontHasItsGlyphsInTheirColours) {
    const Rgba face{0xD9, 0xD9, 0xD9, 255}, red{255, 0, 0, 255};
    WriteFont(BlockFont(), 1);
    WriteFont(StoredFont(), 2);
    const picture::Picture blocks = thumbnail::MakeThumbnail(Path("MACHINE/.0001"), 128);
    EXPECT_EQ(blocks.width, 128);
    EXPECT_EQ(blocks.height, 128);
    EXPECT_EQ(CountOf(blocks, face), 3 * 4 * 2);  // not enlarged
    EXPECT_EQ(CountOf(thumbnail::MakeThumbnail(Path("MACHINE/.0002"), 128), red), 2 * 2);
}

TEST_F(Thumbnail, OfADamagedFileIsAPictureOrAReason) {
    files::MessageFile message = OneRow("ABC");
    WriteFont(BlockFont());
    for (const files::Bytes& bytes : {files::WriteMessage(message), files::WriteFont(StoredFont())}) {
        for (std::size_t size = 0; size < bytes.size(); size += size < 140 ? 27 : 7) {
            samples::WriteWholeFile(Path("cut"), std::span(bytes).first(size));
            if (size < 136) {
                EXPECT_THROW(thumbnail::MakeThumbnail(Path("cut"), 32), std::runtime_error) << size;
            } else {
                EXPECT_EQ(thumbnail::MakeThumbnail(Path("cut"), 32).width, 32) << size;
            }
        }
    }
    EXPECT_THROW(thumbnail::MakeThumbnail(Path("missing"), 32), std::runtime_error);
}

}  // namespace

}  // namespace zel::test
