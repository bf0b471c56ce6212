#include <algorithm>
#include <utility>

#include <gtest/gtest.h>

#include "host/host_disk.h"
#include "host/picture/composite.h"
#include "host/picture/picture_composer.h"
#include "host/picture/png_writer.h"
#include "host/run/batch_run.h"
#include "platform/system/files.h"

namespace zel::test {

namespace {

class PictureOf : public HostDisk {
  protected:
    picture::Picture Compose() {
        picture::PictureComposer composer;
        const run::ImportOutcome outcome = Import({&composer});
        EXPECT_TRUE(outcome.Done()) << outcome.failure;
        picture::Picture picture = composer.TakePicture().value_or(picture::Picture{});
        for (int y = 0; y < picture.height; ++y) {
            const auto row = std::as_const(picture).View().Row(y);
            const bool is_clear =
                std::ranges::all_of(row, [](picture::Rgba pixel) { return pixel == picture::Rgba{}; });
            EXPECT_TRUE(is_clear || picture.MayBeDrawn(y)) << y;
        }
        return picture;
    }
    picture::Picture Compose(const files::MessageFile& message) {
        WriteMessage(message);
        return Compose();
    }
    static picture::Rgba At(const picture::Picture& picture, int x, int y) {
        return picture.View().Row(y)[static_cast<std::size_t>(x)];
    }

    /// The smallest box around all drawn pixels: left, top, right, bottom.
    static std::array<int, 4> Ink(const picture::Picture& picture) {
        std::array<int, 4> box{picture.width, picture.height, -1, -1};
        for (int y = 0; y < picture.height; ++y) {
            for (int x = 0; x < picture.width; ++x) {
                if (At(picture, x, y).alpha == 0) continue;
                box = {std::min(box[0], x), std::min(box[1], y), std::max(box[2], x + 1), std::max(box[3], y + 1)};
            }
        }
        return box;
    }

    static files::PaletteBlock Palette() {
        files::PaletteBlock palette{.entries = std::vector<std::uint32_t>(256, 0)};
        palette.entries[2 * 32 + 1] = files::PaletteEntry(10, 20, 30);    // face of set 2
        palette.entries[2 * 32 + 2] = files::PaletteEntry(200, 100, 50);  // edge of set 2
        return palette;
    }
};

TEST_F(PictureOf, APalMessageIsHigher) {
    WriteFont(BlockFont());
    files::MessageFile message = OneRow("A");
    message.pal = true;
    const picture::Picture picture = Compose(message);
    EXPECT_EQ(picture.height, 576);
    EXPECT_EQ(Ink(picture), (std::array{57, 95, 61, 97}));  // 33 lines are above the picture, not 20
}

TEST_F(PictureOf, AMessageIsNotSearchedWhereNothingWasDrawn) {
    WriteFont(BlockFont());
    picture::Picture picture = Compose(OneRow("A"));
    EXPECT_TRUE(picture.MayBeDrawn(109) && !picture.MayBeDrawn(100) && !picture.MayBeDrawn(200));
    const std::string png = picture::EncodePng(picture);
    picture::Fill(picture.View().Part({0, 200, 1, 201}), {});
    EXPECT_TRUE(picture.MayBeDrawn(100)) << "somebody may have drawn";
    EXPECT_EQ(picture::EncodePng(picture), png);
}

/// Collects the picture of each message of a batch.
struct PictureCollector : host::HostObserver {
    void OnMessage(const document::MessageRecord& message) override {
        pictures.push_back(composer.TakePicture().value_or(picture::Picture{}));
        failures.push_back(message.glyph_failures);
        if (pictures.size() == 1) composer.GiveBack(pictures.front());
    }
    picture::PictureComposer composer;
    std::vector<picture::Picture> pictures;
    std::vector<std::vector<std::string>> failures;
};

TEST_F(PictureOf, EachMessageOfABatchHasItsOwnGlyphs) {
    files::FontFile edged = BlockFont();  // the same glyphs in another colour of the palette
    edged.encoding.clear();
    const files::RunCodes codes{files::ColourRun(2, 255, 4), files::EndOfLine(), files::ColourRun(2, 255, 4),
                                files::EndOfLine(), files::EndOfGlyph()};
    for (const unsigned code : {65U, 66U, 67U}) edged.AddRunCoded(code, codes, 3, 4);
    WriteFont(BlockFont());
    WriteFont(edged, 2);
    files::MessageFile message = OneRow("AB");
    message.palette = Palette();
    WriteMessage(message);
    WriteMessage(OneRow("A"), ".0002");
    message.rows = OneRow("A").rows;
    WriteMessage(message, ".0003");
    message.header.font_numbers[0] = 2;
    WriteMessage(message, ".0004");
    run::BatchRequest request;
    request.disk = m_scratch.Path().string();
    request.ranges = {{"1", "4"}};
    PictureCollector collector;
    run::RunBatch(request, std::array<host::HostObserver*, 2>{&collector.composer, &collector});
    ASSERT_EQ(collector.pictures.size(), 4U);
    EXPECT_EQ(collector.pictures[0].width, 720);
    EXPECT_EQ(collector.pictures[0].height, 486);
    // x 50 + 7; y 100 + char_y 10 - glyph_top 3, and the glyph's blank first line.
    EXPECT_EQ(Ink(collector.pictures[0]), (std::array{57, 108, 71, 110}));
    EXPECT_EQ(Ink(collector.pictures[1]), (std::array{57, 108, 61, 110})) << "no pixels of the picture before remain";
    EXPECT_NE(At(collector.pictures[1], 57, 108), At(collector.pictures[0], 57, 108)) << "another palette";
    EXPECT_EQ(At(collector.pictures[2], 57, 108), (picture::Rgba{10, 20, 30, 255}));
    EXPECT_EQ(At(collector.pictures[3], 57, 108), (picture::Rgba{200, 100, 50, 255}))
        << "another font of the same directory";
}

/// A font in which the characters of a text share their run codes, from places a code apart.
files::FontFile FontOfShared(const std::string& text, files::RunCodes codes) {
    codes.push_back(files::EndOfGlyph());
    files::FontFile font;
    font.header.font_height = 20;
    font.AddRunCoded(static_cast<unsigned char>(text[0]), codes, 3, 4);
    files::CharEntry entry = font.directory.at(static_cast<unsigned char>(text[0]));
    for (const char code : text) {
        font.directory.at(static_cast<unsigned char>(code)) = entry;
        entry.glyph_offset += 4;
    }
    return font;
}

/// Codes for `lines` lines, of which the first `full` consist of `runs` runs of 32 pixels.
files::RunCodes Lines(unsigned lines, unsigned full, unsigned runs) {
    files::RunCodes codes;
    for (unsigned line = 0; line < lines; ++line) {
        codes.insert(codes.end(), line < full ? runs : 0, files::ColourRun(1, 255, 32));
        codes.push_back(files::EndOfLine());
    }
    return codes;
}

TEST_F(PictureOf, GlyphsBeyondALimitAreLeftOutWithTheReason) {
    files::FontFile larger_than_file;
    larger_than_file.header.font_height = 20;
    larger_than_file.AddStored('A', {.width = 8000, .height = 8000, .pixels = {255, 0, 0, 255}}, 2, 1);
    std::string many;
    for (char code = '0'; code < '0' + 70; ++code) many += code;
    const files::RunCodes stay((std::size_t{1} << 18) + 70, files::Stay(1, 255));
    const struct {
        files::FontFile font;
        std::string text;
        char first_failed;
        std::size_t failures;
        bool drawn;  // some other glyph
        const char* reason;
    } cases[] = {
        {larger_than_file, "A", 'A', 1, false, "larger than its font file"},
        {FontOfShared("A", Lines(501, 1, 499)), "AA", 'A', 1, false, "15968 x 502 pixels are too many for one glyph"},
        {FontOfShared("ABCDEFGH", Lines(501, 1, 128)), "ABCDEFGHA", 'G', 2, true,
         "beyond the 48 MiB that all glyphs may have together"},
        {FontOfShared(many, stay), many, 'o', 7, false,
         "beyond the 16777216 run codes that all glyphs may have together"},
        {FontOfShared("A", Lines(400, 400, 22)), std::string(180, 'A'), 'A', 119, true,
         "more than 40 times the picture"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.reason);
        WriteFont(row.font);
        files::MessageFile message = OneRow("A");
        message.rows.clear();
        for (std::size_t at = 0; at < row.text.size(); at += 60)
            message.rows.push_back(files::RowFromText(120, row.text.substr(at, 60), 0, 0));
        WriteMessage(message);
        PictureCollector collector;
        Import({&collector.composer, &collector});
        const std::vector<std::string>& failures = collector.failures.at(0);
        EXPECT_EQ(failures.size(), row.failures);
        EXPECT_EQ(failures.at(0).find("character " + std::to_string(row.first_failed) + " of " +
                                      system::ModulePath(Path("MACHINE/.0001")) + ": "),
                  0U)
            << failures.at(0);
        EXPECT_TRUE(failures.at(0).ends_with(row.reason)) << failures.at(0);
        EXPECT_EQ(Ink(collector.pictures.at(0))[2] > 0, row.drawn);
    }
}

TEST_F(PictureOf, ALaterCharacterIsDrawnOverAnEarlierOne) {
    WriteFont(BlockFont());
    files::MessageFile message = OneRow("AB");
    message.palette = Palette();
    message.palette->entries[3 * 32 + 1] = files::PaletteEntry(99, 99, 99);
    message.rows[0].cells[1].char_x = 52;
    message.rows[0].cells[1].colour_set = 3;
    const picture::Picture picture = Compose(message);
    EXPECT_EQ(At(picture, 58, 108).red, 10);
    EXPECT_EQ(At(picture, 59, 108).red, 99);
}

TEST_F(PictureOf, TextIsOnTheBaselineOfItsBitmaps) {
    files::FontFile font = BlockFont();
    font.header.font_height = 60;
    font.header.row_inset = 2;
    font.header.row_top_offset = 1;
    WriteFont(font);
    files::MessageFile message = OneRow("B");
    message.rows[0].row_top = 9;  // the row contains a font that is six pixels higher
    WriteMessage(message);
    const int baseline = Ink(Compose())[3];
    EXPECT_EQ(baseline, 104);
    m_request.host.tt_convert = true;
    for (const bool align : {true, false}) {
        m_request.host.baseline_align = align;
        const auto ink = Ink(Compose());
        EXPECT_EQ(ink[3], baseline) << align;
        EXPECT_GT(ink[3] - ink[1], 30) << align;
        EXPECT_NEAR(ink[0], 57, 6) << align;
    }
}

TEST_F(PictureOf, TextHasItsOwnBaselineUnlessItIsAligned) {
    files::FontFile font = BlockFont();
    font.header.font_height = 60;
    WriteFont(font);
    files::MessageFile message = OneRow("BB");
    message.rows[0].cells[1].char_y = 30;
    WriteMessage(message);
    m_request.host.tt_convert = true;
    EXPECT_EQ(Ink(Compose())[3], 110);
    m_request.host.baseline_align = false;
    EXPECT_EQ(Ink(Compose())[3], 130);
}

TEST_F(PictureOf, TextHasItsFaceColourOverItsEdge) {
    files::FontFile font = BlockFont();
    font.header.font_height = 60;
    font.header.edge_size = 4;
    files::MessageFile message = OneRow("A");
    message.palette = Palette();
    WriteMessage(message);
    m_request.host.tt_convert = true;
    WriteFont(font);
    const auto plain = Ink(Compose());
    font.header.font_height = 60 + 8;  // the edge takes part of the height
    font.header.edge_type = 1;
    WriteFont(font);
    const picture::Picture bordered = Compose();
    EXPECT_EQ(Ink(bordered), (std::array{plain[0] - 4, plain[1] - 4, plain[2] + 4, plain[3] + 4}));
    int faces = 0, edges = 0;
    for (int y = plain[1]; y < plain[3]; ++y) {
        for (int x = plain[0]; x < plain[2]; ++x) {
            faces += At(bordered, x, y) == picture::Rgba{10, 20, 30, 255};
            edges += At(bordered, x, y) == picture::Rgba{200, 100, 50, 255};
        }
    }
    EXPECT_GT(faces, 100);
    EXPECT_GT(edges, 100);
}

}  // namespace

}  // namespace zel::test
