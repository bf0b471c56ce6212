#include "samples/disk/demo_disk.h"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>

#include <gtest/gtest.h>

#include "base/text.h"
#include "samples/disk/broadcast_messages.h"
#include "samples/disk/disk_fonts.h"
#include "samples/disk/format_messages.h"
#include "samples/disk/page.h"
#include "samples/run_decoder.h"
#include "samples/scratch_directory.h"

namespace zel::samples {
namespace {

using samples_test::ReadAll;
using samples_test::RunDecoder;
using samples_test::ScratchDirectory;

std::map<std::string, std::string> FilesBelow(const std::filesystem::path& directory) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
        if (entry.is_regular_file()) files[entry.path().lexically_relative(directory)] = ReadAll(entry.path());
    }
    return files;
}

std::vector<std::string> NamesOf(const std::map<std::string, std::string>& files) {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : files) names.push_back(name);
    return names;
}

TEST(DemonstrationDisk, HasFontsMessagesAndBothLists) {
    const ScratchDirectory scratch;
    const auto written = WriteDemonstrationDisk(scratch.Path() / "disk");
    const auto files = FilesBelow(scratch.Path() / "disk");
    std::vector<std::string> expected;
    for (const unsigned font : {1U, 2U, 3U, 12U, 14U, 15U, 16U, 18U, 20U, 21U, 31U, 32U, 40U, 60U}) {
        expected.push_back("MACHINE/" + base::NumberedName(static_cast<int>(font)));
    }
    for (unsigned message = 1; message <= 21; ++message)
        expected.push_back("MESSAGES/" + base::NumberedName(static_cast<int>(message)));
    expected.insert(expected.end(), {"bitstream_fontlist.txt", "typeface_list.txt"});
    EXPECT_EQ(NamesOf(files), expected);
    EXPECT_EQ(written.size(), expected.size());
}

TEST(DemonstrationDisk, IsTheSameOnEveryRun) {
    const ScratchDirectory first, second;
    WriteDemonstrationDisk(first.Path());
    WriteDemonstrationDisk(second.Path());
    EXPECT_TRUE(FilesBelow(first.Path()) == FilesBelow(second.Path()));
    WriteDemonstrationDisk(first.Path());
    EXPECT_TRUE(FilesBelow(first.Path()) == FilesBelow(second.Path())) << "written over itself";
}

TEST(DemonstrationDisk, NamesAFileThatCantBeWritten) {
    const ScratchDirectory scratch;
    std::filesystem::create_directories(scratch.Path() / "MACHINE" / ".0012" / "in the way");
    try {
        WriteDemonstrationDisk(scratch.Path());
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("MACHINE/.0012: "), std::string::npos) << error.what();
    }
}

TEST(Rasterizer, NamesATypefaceThatIsMissing) {
    try {
        const Rasterizer rasterizer({.family = "No Such Face", .em = 40});
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("No Such Face"), std::string::npos) << error.what();
    }
}

/// The fonts, drawn once for all tests.
const FontShelf& Shelf() {
    static const FontShelf shelf = MakeFontShelf();
    return shelf;
}

RunCodes CodesOf(const FontFile& file, const CharEntry& entry) {
    RunCodes codes;
    for (std::size_t at = entry.glyph_offset; at + 4 <= file.encoding.size(); at += 4) {
        const auto& bytes = file.encoding;
        codes.push_back(std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
                        std::uint32_t{bytes[at + 2]} << 8 | bytes[at + 3]);
        if (codes.back() == 0) break;
    }
    return codes;
}

TEST(DiskFonts, KeepEveryGlyphInsideItsRowAndTheReadersLimits) {
    for (const DiskFont* font : Shelf().All()) {
        for (unsigned code = 0; code < kFontCharCount; ++code) {
            const CharEntry& entry = font->file.directory[code];
            if (entry.glyph_kind == 0) continue;
            SCOPED_TRACE(font->file.header.font_name + ", character " + std::to_string(code));
            const int top = font->baseline - static_cast<int>(entry.glyph_top);
            ASSERT_GE(top, font->RowTop());
            if (entry.glyph_kind == CharEntry::kStored) {
                const StoredGlyph& glyph = font->file.stored.at(code);
                ASSERT_EQ(glyph.pixels.size(), std::size_t{4} * glyph.width * glyph.height);
                ASSERT_LE(top + static_cast<int>(glyph.height), font->RowBottom());
                continue;
            }
            const RunDecoder drawn(CodesOf(font->file, entry), {});
            ASSERT_LE(top + static_cast<int>(drawn.Lines().size()) + 2, font->RowBottom());
            ASSERT_GE(drawn.Lines().size(), 1u);
            ASSERT_LT(drawn.MostRunsInALine(), 500u);
            for (const auto& line : drawn.Lines()) ASSERT_LT(line.size(), 200u);
        }
    }
}

TEST(DiskFonts, HaveColoursMultipliedByAlphaInStoredGlyphs) {
    for (const DiskFont* font : {&Shelf().chrome_64, &Shelf().artwork}) {
        for (const auto& [code, glyph] : font->file.stored) {
            for (std::size_t n = 0; n < glyph.pixels.size(); n += 4) {
                const auto strongest = std::max({glyph.pixels[n + 1], glyph.pixels[n + 2], glyph.pixels[n + 3]});
                ASSERT_LE(strongest, glyph.pixels[n]) << "character " << code << ", byte " << n;
            }
        }
    }
}

/// A character as a host receives it: its place on the screen.
struct Placed {
    unsigned font_number = 0, code = 0;
    int x = 0, row_y = 0, char_y = 0, row_top = 0;
};

/// Reads the places from a written NTSC or PAL message without a flash font.
std::vector<Placed> PlacesIn(const Bytes& bytes) {
    const auto u16 = [&](std::size_t at) { return bytes.at(at) << 8 | bytes.at(at + 1); };
    const int line_offset = bytes.at(136) >= 0x80 ? 33 : 20;
    std::vector<Placed> places;
    std::size_t at = 204;
    for (int row = 0; row <= u16(156); ++row) {
        const std::size_t head = at;
        at += 8;
        for (int n = 0; n < bytes.at(head + 4) >> 2; ++n, at += 8) {
            const auto slot = static_cast<std::size_t>(bytes.at(at + 4) >> 2);
            places.push_back({static_cast<unsigned>(u16(172 + 2 * slot)), static_cast<unsigned>(u16(at + 4)) & 0xFF,
                              (u16(at) & 1023) + 7, (u16(head) & 1023) - line_offset, u16(at + 2) & 1023,
                              u16(head + 2) & 1023});
        }
    }
    return places;
}

const DiskFont* FontOf(unsigned number) {
    const auto fonts = Shelf().All();
    const auto found = std::ranges::find(fonts, number, [](const DiskFont* font) { return font->number; });
    return found == fonts.end() ? nullptr : *found;
}

TEST(DiskMessages, StayInsideTheSafeTitleArea) {
    for (const auto& messages : {MakeBroadcastMessages(Shelf()), MakeFormatMessages(Shelf())}) {
        for (const auto& message : messages) {
            const bool is_rgba = message.bytes.at(3) != (702 & 255), has_flash_font = (message.bytes.at(136) & 1) != 0;
            if (is_rgba || has_flash_font) continue;
            const int lines = message.bytes.at(136) >= 0x80 ? 576 : 486;
            for (const Placed& place : PlacesIn(message.bytes)) {
                const DiskFont* font = FontOf(place.font_number);
                if (font == nullptr || font == &Shelf().artwork) continue;
                SCOPED_TRACE("message " + std::to_string(message.number) + ", character " + std::to_string(place.code));
                const CharEntry& entry = font->file.directory.at(place.code);
                const int pen = place.x + font->left_pad;
                const int baseline = place.row_y + place.char_y - place.row_top + font->RowTop();
                EXPECT_GE(pen, kSafeLeft);
                EXPECT_LE(pen + static_cast<int>(entry.glyph_metric), kSafeRight + 2);
                EXPECT_GE(baseline - static_cast<int>(entry.glyph_top), lines / 10);
                EXPECT_LE(baseline, lines - lines / 10);
            }
        }
    }
}

TEST(Page, LetsTheBaselinesOfARowMeet) {
    const FontShelf& fonts = Shelf();
    Page page;
    page.Row(200, fonts.lantern_28).Text(fonts.lantern_28, 0, 100, "x").Text(fonts.gold_52, 0, 200, "x");
    page.Text(fonts.lantern_shade_32, 0, 300, "x");
    const std::array<const DiskFont*, 3> used{&fonts.lantern_28, &fonts.gold_52, &fonts.lantern_shade_32};
    const MessageFile message = page.Finish();
    const RowText& row = message.rows.at(0);
    for (std::size_t n = 0; n < used.size(); ++n) {
        const int top = static_cast<int>(used[n]->file.directory['x'].glyph_top);
        const int shift =
            static_cast<int>(row.cells.at(n).char_y) - top - (static_cast<int>(row.row_top) - used[n]->RowTop());
        EXPECT_EQ(static_cast<int>(row.row_y) - 20 + shift + top, 200) << used[n]->file.header.font_name;
    }
}

TEST(Page, KernsAndAligns) {
    const DiskFont& font = Shelf().lantern_bold_38;
    ASSERT_LT(font.Kerning('A', 'V'), 0);
    EXPECT_EQ(TextWidth(font, "AV"), font.Advance('A') + font.Kerning('A', 'V') + font.Advance('V'));
    Page page;
    page.Line(100, font, 0, 600, "AV", Align::kRight);
    const auto cells = page.Finish().rows.at(0).cells;
    EXPECT_EQ(static_cast<int>(cells[1].char_x) + 7 + font.left_pad + font.Advance('V'), 600);
    EXPECT_EQ(cells[1].char_x - cells[0].char_x, static_cast<unsigned>(font.Advance('A') + font.Kerning('A', 'V')));
    EXPECT_TRUE(cells[0].place_flag);
    EXPECT_FALSE(cells[1].place_flag);
}

TEST(Page, RefusesWhatTheFileCantHold) {
    const DiskFont& font = Shelf().lantern_28;
    Page page;
    EXPECT_THROW(page.Text(font, 0, 100, "no row yet"), std::logic_error);
    page.Row(100, font).Text(font, 0, 20, std::string(60, 'i'));
    EXPECT_THROW(page.Text(font, 0, 20, "1234"), std::logic_error) << "64 characters";
    EXPECT_THROW(page.Line(100, font, 0, 3, "x"), std::logic_error) << "char_x below 0";
    EXPECT_THROW(page.Row(5, font), std::logic_error) << "row_y below 0";
}

struct EdgeCase {
    const char* name;
    Edge edge;
    int x, y;  ///< from the face's single pixel
    bool covered;
};
void PrintTo(const EdgeCase& row, std::ostream* out) {
    *out << row.name;
}

class Edges : public testing::TestWithParam<EdgeCase> {};
TEST_P(Edges, CoverThePixel) {
    Coverage face{21, 21, Bytes(21 * 21)};
    face.At(10, 10) = 255;
    const Coverage edge = DrawEdge(face, GetParam().edge);
    const auto at = [](int offset) { return static_cast<unsigned>(10 + offset); };
    EXPECT_EQ(edge.At(at(GetParam().x), at(GetParam().y)), GetParam().covered ? 255 : 0);
}
INSTANTIATE_TEST_SUITE_P(
    Each, Edges,
    testing::Values(EdgeCase{"border_reaches_its_size", {EdgeType::kBorder, 0, 3}, -3, 0, true},
                    EdgeCase{"border_ends_there", {EdgeType::kBorder, 0, 3}, 4, 0, false},
                    EdgeCase{"border_is_round", {EdgeType::kBorder, 0, 3}, 3, 3, false},
                    EdgeCase{"shadow_falls_to_the_lower_right", {EdgeType::kDropShadow, 0, 6}, 4, 4, true},
                    EdgeCase{"shadow_is_solid", {EdgeType::kDropShadow, 0, 6}, 2, 2, true},
                    EdgeCase{"shadow_leaves_the_lit_side", {EdgeType::kDropShadow, 0, 6}, -1, -1, false},
                    EdgeCase{"direction_2_is_lower_left", {EdgeType::kDropShadow, 2, 6}, -4, 4, true},
                    EdgeCase{"direction_5_is_up", {EdgeType::kDropShadow, 5, 6}, 0, -6, true},
                    EdgeCase{"offset_is_the_face_moved", {EdgeType::kOffset, 7, 6}, 6, 0, true},
                    EdgeCase{"offset_is_apart", {EdgeType::kOffset, 7, 6}, 3, 0, false},
                    EdgeCase{"no_edge_covers_nothing", {EdgeType::kNone, 0, 6}, 0, 0, false}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace zel::samples
