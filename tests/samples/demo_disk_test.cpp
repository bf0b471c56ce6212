#include "samples/disk/demo_disk.h"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>

#include <gmock/gmock.h>

#include "base/text.h"
#include "module/font/format/measure_run_codes.h"
#include "module/message/format/message_loader.h"
#include "samples/disk/broadcast_messages.h"
#include "samples/disk/disk_fonts.h"
#include "samples/disk/format_messages.h"
#include "samples/disk/page.h"
#include "samples/scratch_directory.h"

namespace zel::samples {
namespace {

using files::Bytes;
using files::CharEntry;
using files::Coverage;
using files::kFontCharCount;
using files::MessageFile;
using files::RowText;
using files::StoredGlyph;
using samples_test::ReadAll;
using samples_test::ScratchDirectory;
using testing::HasSubstr;
using testing::ThrowsMessage;

std::map<std::string, std::string> FilesBelow(const std::filesystem::path& directory) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
        if (entry.is_regular_file()) files[entry.path().lexically_relative(directory)] = ReadAll(entry.path());
    }
    return files;
}

TEST(DemonstrationDisk, HasFontsMessagesAndBothListsTheSameOnEveryRun) {
    const ScratchDirectory scratch;
    const auto written = WriteDemonstrationDisk(scratch.Path() / "disk");
    const auto files = FilesBelow(scratch.Path() / "disk");
    std::vector<std::string> expected, names;
    for (const int font : {1, 2, 3, 12, 14, 15, 16, 18, 20, 21, 31, 32, 40, 60})
        expected.push_back("MACHINE/" + base::NumberedName(font));
    for (int message = 1; message <= 21; ++message) expected.push_back("MESSAGES/" + base::NumberedName(message));
    expected.insert(expected.end(), {"bitstream_fontlist.txt", "typeface_list.txt"});
    for (const auto& [name, bytes] : files) names.push_back(name);
    EXPECT_EQ(names, expected);
    EXPECT_THAT(files.at("bitstream_fontlist.txt"), HasSubstr("\nLantern 20 = a plain sans serif\n\troman\t20\n"));
    EXPECT_EQ(written.size(), expected.size());
    WriteDemonstrationDisk(scratch.Path() / "again");
    EXPECT_TRUE(FilesBelow(scratch.Path() / "again") == files);
}

TEST(DemonstrationDisk, NamesAFileThatCantBeWritten) {
    const ScratchDirectory scratch;
    std::filesystem::create_directories(scratch.Path() / "MACHINE" / ".0012" / "in the way");
    EXPECT_THAT([&] { WriteDemonstrationDisk(scratch.Path()); },
                ThrowsMessage<std::runtime_error>(HasSubstr("MACHINE/.0012: ")));
}

TEST(Rasterizer, NamesATypefaceThatIsMissing) {
    EXPECT_THAT([] { Rasterizer({.family = "No Such Face", .em = 40}); },
                ThrowsMessage<std::runtime_error>(HasSubstr("No Such Face")));
}

/// The fonts, drawn once for all tests.
const FontShelf& Shelf() {
    static const FontShelf shelf = MakeFontShelf();
    return shelf;
}

TEST(DiskFonts, KeepEveryGlyphInsideItsRowAndItsColoursBelowAlpha) {
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
                for (std::size_t n = 0; n < glyph.pixels.size(); n += 4)
                    ASSERT_LE(*std::max_element(&glyph.pixels[n], &glyph.pixels[n] + 4), glyph.pixels[n]);
                continue;
            }
            const font::GlyphSize size = font::MeasureRunCodes({font->file.encoding, entry.glyph_offset});
            ASSERT_GT(size.height, 2);
            ASSERT_LE(top + size.height, font->RowBottom());
            ASSERT_LE(size.width, 200) << "no line of more runs than are read";
        }
    }
}

const DiskFont* FontOf(unsigned number) {
    for (const DiskFont* font : Shelf().All()) {
        if (font->number == number) return font;
    }
    return nullptr;
}

TEST(DiskMessages, StayInsideTheSafeTitleArea) {
    std::vector<DiskMessage> messages = MakeBroadcastMessages(Shelf());
    std::ranges::move(MakeFormatMessages(Shelf()), std::back_inserter(messages));
    std::size_t placed = 0;
    for (const auto& file : messages) {
        message::LoadedMessage message;
        if (message::LoadMessage(file.bytes, message) != message::MessageOutcome::kRead) continue;  // a picture
        if (message.flash_font) continue;
        const int lines = message.flags->Lines();
        for (int r = 0; r < message.header->RowCount(); ++r) {
            const tag_msg_row& row = message.rows[static_cast<std::size_t>(r)];
            for (int k = 0; k < row.CharCount(); ++k) {
                const tag_msg_char& cell = row.chars[k];
                const DiskFont* font = FontOf(message.header->font_numbers[cell.Font()]);
                if (font == nullptr || font == &Shelf().artwork) continue;
                SCOPED_TRACE("message " + std::to_string(file.number) + ", character " + std::to_string(cell.Code()));
                const CharEntry& entry = font->file.directory.at(static_cast<std::size_t>(cell.Code() & 0xFF));
                const int pen = cell.X() + 7 + font->left_pad;
                const int baseline = row.Y() + cell.Y() - row.Top() + font->RowTop();
                EXPECT_GE(pen, kSafeLeft);
                EXPECT_LE(pen + static_cast<int>(entry.glyph_metric), kSafeRight + 2);
                EXPECT_GE(baseline - static_cast<int>(entry.glyph_top), lines / 10);
                EXPECT_LE(baseline, lines - lines / 10);
                ++placed;
            }
        }
    }
    EXPECT_GT(placed, 500U);
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

struct EdgeCase {
    const char* name;
    Edge edge;
    unsigned x, y;  ///< 10 and 10 are the face's single pixel.
    bool covered;
};

TEST(Edges, CoverTheirPixels) {
    constexpr EdgeCase kCases[] = {
        {"border reaches its size", {EdgeType::kBorder, 0, 3}, 7, 10, true},
        {"border ends there", {EdgeType::kBorder, 0, 3}, 14, 10, false},
        {"border is round", {EdgeType::kBorder, 0, 3}, 13, 13, false},
        {"shadow falls to the lower right", {EdgeType::kDropShadow, 0, 6}, 14, 14, true},
        {"shadow is solid", {EdgeType::kDropShadow, 0, 6}, 12, 12, true},
        {"shadow leaves the lit side", {EdgeType::kDropShadow, 0, 6}, 9, 9, false},
        {"direction 2 is lower left", {EdgeType::kDropShadow, 2, 6}, 6, 14, true},
        {"direction 5 is up", {EdgeType::kDropShadow, 5, 6}, 10, 4, true},
        {"offset is the face moved", {EdgeType::kOffset, 7, 6}, 16, 10, true},
        {"offset is apart", {EdgeType::kOffset, 7, 6}, 13, 10, false},
        {"no edge covers nothing", {EdgeType::kNone, 0, 6}, 10, 10, false},
    };
    Coverage face{21, 21, Bytes(21 * 21)};
    face.At(10, 10) = 255;
    for (const EdgeCase& row : kCases)
        EXPECT_EQ(DrawEdge(face, row.edge).At(row.x, row.y), row.covered ? 255 : 0) << row.name;
}

}  // namespace
}  // namespace zel::samples
