#include <gtest/gtest.h>

#include "host/host_disk.h"
#include "host/picture/picture_composer.h"
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
        return composer.TakePicture().value_or(picture::Picture{});
    }
    picture::Picture Compose(const samples::MessageFile& message) {
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

    static samples::PaletteBlock Palette() {
        samples::PaletteBlock palette{.entries = std::vector<std::uint32_t>(256, 0)};
        palette.entries[2 * 32 + 1] = samples::PaletteEntry(10, 20, 30);    // face of set 2
        palette.entries[2 * 32 + 2] = samples::PaletteEntry(200, 100, 50);  // edge of set 2
        return palette;
    }
};

TEST_F(PictureOf, AMessageShowsItsGlyphsInPlaceAndColour) {
    WriteFont(BlockFont());
    samples::MessageFile message = OneRow("A");
    message.palette = Palette();
    const picture::Picture picture = Compose(message);
    EXPECT_EQ(picture.width, 720);
    EXPECT_EQ(picture.height, 486);
    // x 50 + 7; y 100 + char_y 10 - glyph_top 3, and the glyph's blank first line.
    EXPECT_EQ(Ink(picture), (std::array{57, 108, 61, 110}));
    EXPECT_EQ(At(picture, 57, 108), (picture::Rgba{10, 20, 30, 255}));
}

TEST_F(PictureOf, APalMessageIsHigher) {
    WriteFont(BlockFont());
    samples::MessageFile message = OneRow("A");
    message.pal = true;
    const picture::Picture picture = Compose(message);
    EXPECT_EQ(picture.height, 576);
    EXPECT_EQ(Ink(picture), (std::array{57, 95, 61, 97}));  // 33 lines are above the picture, not 20
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
    samples::FontFile edged = BlockFont();  // the same glyphs in another colour of the palette
    edged.encoding.clear();
    const samples::RunCodes codes{samples::ColourRun(2, 255, 4), samples::EndOfLine(), samples::ColourRun(2, 255, 4),
                                  samples::EndOfLine(), samples::EndOfGlyph()};
    for (const unsigned code : {65U, 66U, 67U}) edged.AddRunCoded(code, codes, 3, 4);
    WriteFont(BlockFont());
    WriteFont(edged, 2);
    samples::MessageFile message = OneRow("AB");
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
    EXPECT_EQ(Ink(collector.pictures[0]), (std::array{57, 108, 71, 110}));
    EXPECT_EQ(Ink(collector.pictures[1]), (std::array{57, 108, 61, 110})) << "no pixels of the picture before remain";
    EXPECT_NE(At(collector.pictures[1], 57, 108), At(collector.pictures[0], 57, 108)) << "another palette";
    EXPECT_EQ(At(collector.pictures[2], 57, 108), (picture::Rgba{10, 20, 30, 255}));
    EXPECT_EQ(At(collector.pictures[3], 57, 108), (picture::Rgba{200, 100, 50, 255}))
        << "another font of the same directory";
}

TEST_F(PictureOf, AStoredGlyphLargerThanItsFileIsSkipped) {
    samples::FontFile font;
    font.header.font_height = 20;
    font.AddStored('A', {.width = 8000, .height = 8000, .pixels = {255, 0, 0, 255}}, 2, 1);
    WriteFont(font);
    WriteMessage(OneRow("A"));
    PictureCollector collector;
    Import({&collector.composer, &collector});
    EXPECT_EQ(collector.failures,
              (std::vector<std::vector<std::string>>{
                  {"character 65 of " + system::ModulePath(Path("MACHINE/.0001")) + ": larger than its font file"}}));
}

TEST_F(PictureOf, GlyphsBeyondTheLimitOfAMessageAreLeftOut) {
    // One line of 499 runs, then empty lines: 15968 x 501 pixels from 4 KB.
    samples::RunCodes codes(499, samples::ColourRun(1, 255, 32));
    codes.resize(998, samples::EndOfLine());
    codes.push_back(samples::EndOfGlyph());
    samples::FontFile font = BlockFont();
    font.encoding.clear();
    for (const unsigned code : {65U, 66U, 67U}) font.AddRunCoded(code, codes, 3, 4);
    WriteFont(font);
    WriteMessage(OneRow("ABCB"));
    PictureCollector collector;
    Import({&collector.composer, &collector});
    EXPECT_EQ(collector.failures,
              (std::vector<std::vector<std::string>>{{"character 67 of " + system::ModulePath(Path("MACHINE/.0001")) +
                                                      ": beyond the 64 MiB that all glyphs may have together"}}));
    EXPECT_EQ(Ink(collector.pictures.at(0))[2], 720);
}

TEST_F(PictureOf, CharactersThatCoverThePictureTooOftenAreLeftOut) {
    samples::RunCodes codes;
    for (int line = 0; line < 400; ++line) {
        codes.insert(codes.end(), 22, samples::ColourRun(1, 255, 32));
        codes.push_back(samples::EndOfLine());
    }
    codes.push_back(samples::EndOfGlyph());
    samples::FontFile font = BlockFont();
    font.encoding.clear();
    font.AddRunCoded('A', codes, 3, 4);
    WriteFont(font);
    samples::CharCell like;
    like.colour_set = 2;
    samples::MessageFile message = OneRow("A");
    message.rows.assign(3, samples::RowFromText(20, std::string(60, 'A'), 0, 0, like));
    WriteMessage(message);
    PictureCollector collector;
    Import({&collector.composer, &collector});
    ASSERT_EQ(collector.failures.size(), 1U);
    EXPECT_GT(collector.failures[0].size(), 20U);
    EXPECT_LT(collector.failures[0].size(), 100U);
    EXPECT_NE(collector.failures[0].at(0).find("more than 80 times the picture"), std::string::npos);
}

TEST_F(PictureOf, AStoredGlyphIsUpright) {
    samples::FontFile font;
    font.header.font_height = 20;
    // Red above, half blue below; alpha, blue, green, red, the colours multiplied by alpha.
    font.AddStored('A', {.width = 1, .height = 2, .pixels = {255, 0, 0, 255, 128, 128, 0, 0}}, 2, 1);
    WriteFont(font);
    const picture::Picture picture = Compose(OneRow("A"));
    EXPECT_EQ(At(picture, 57, 108), (picture::Rgba{255, 0, 0, 255}));
    EXPECT_EQ(At(picture, 57, 109), (picture::Rgba{0, 0, 255, 128}));
}

TEST_F(PictureOf, ALaterCharacterIsDrawnOverAnEarlierOne) {
    WriteFont(BlockFont());
    samples::MessageFile message = OneRow("AB");
    message.palette = Palette();
    message.palette->entries[3 * 32 + 1] = samples::PaletteEntry(99, 99, 99);
    message.rows[0].cells[1].char_x = 52;
    message.rows[0].cells[1].colour_set = 3;
    const picture::Picture picture = Compose(message);
    EXPECT_EQ(At(picture, 58, 108).red, 10);
    EXPECT_EQ(At(picture, 59, 108).red, 99);
}

TEST_F(PictureOf, TextIsOnTheBaselineOfItsBitmaps) {
    samples::FontFile font = BlockFont();
    font.header.font_height = 60;
    font.header.row_inset = 2;
    font.header.row_top_offset = 1;
    WriteFont(font);
    samples::MessageFile message = OneRow("B");
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
    samples::FontFile font = BlockFont();
    font.header.font_height = 60;
    WriteFont(font);
    samples::MessageFile message = OneRow("BB");
    message.rows[0].cells[1].char_y = 30;
    WriteMessage(message);
    m_request.host.tt_convert = true;
    EXPECT_EQ(Ink(Compose())[3], 110);
    m_request.host.baseline_align = false;
    EXPECT_EQ(Ink(Compose())[3], 130);
}

TEST_F(PictureOf, TextHasItsFaceColourOverItsEdge) {
    samples::FontFile font = BlockFont();
    font.header.font_height = 60;
    font.header.edge_size = 4;
    samples::MessageFile message = OneRow("A");
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
