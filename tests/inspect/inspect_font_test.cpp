#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "inspect/break_case.h"

namespace zel::test {

namespace {

using inspect::FileReport;
using inspect::Verdict;
using testing::IsEmpty;

FileReport Inspect(const files::FontFile& font) {
    return inspect::InspectBytes(files::WriteFont(font), ".0012");
}

TEST(InspectFont, ReportsTheContentOfAWholeFont) {
    const FileReport report = Inspect(GoodFont());
    EXPECT_EQ(report.kind, inspect::FileKind::kFont);
    EXPECT_EQ(report.verdict, Verdict::kWhole) << Lines(report.defects);
    EXPECT_THAT(report.remarks, IsEmpty());
    const inspect::FontReport& font = *report.font;
    EXPECT_EQ(font.name, "Quay Bold");
    EXPECT_EQ(font.id, "5021");
    EXPECT_EQ(font.height, 40);
    EXPECT_EQ(font.edge_type, 2);
    EXPECT_EQ(font.edge_angle, 135);
    EXPECT_EQ(font.stored_glyphs, 2);
    EXPECT_EQ(font.run_coded_glyphs, 2);
    EXPECT_EQ(font.without_glyph, 188);
    ASSERT_TRUE(font.smallest && font.largest);
    EXPECT_EQ(font.smallest->code, 67);
    EXPECT_EQ(font.largest->code, 66);
    EXPECT_EQ(font.largest->width, 8);
    EXPECT_EQ(font.largest->height, 3);
    EXPECT_EQ(report.sections.back().count, 2);
    EXPECT_EQ(report.sections.back().offset + report.sections.back().size, report.size);
}

TEST(InspectFont, GivesTheReasonForEachDamage) {
    using F = files::FontFile;
    constexpr BreakCase<F> kCases[] = {
        // Run codes
        {[](F& f) { f.directory[65].glyph_offset = 5000; }, kReadable,
         "1 run-coded glyph begins after the encoding data (code 65 'A')"},
        {[](F& f) { f.encoding.resize(f.encoding.size() - 4); }, kReadable,
         "1 run-coded glyph runs past the end of the encoding data (code 66 'B')"},
        {[](F& f) { f.AddRunCoded(70, files::RunCodes(501, files::EndOfLine()), 0, 0); }, kReadable,
         "1 run-coded glyph continues past 500 lines"},
        {[](F& f) { f.directory[65].glyph_offset = f.directory[66].glyph_offset = 5000; }, kReadable,
         "2 run-coded glyphs begin after the encoding data (codes 65 'A', 66 'B')"},
        {[](F& f) {
             f.header.font_flags = 0;
             f.header.encoding_size = 24;
         },
         kReadable, "2 run-coded glyphs have no pixels, as no encoding data are read"},
        {[](F& f) {
             f.header.font_flags = 0;
             f.directory[65] = f.directory[66] = {};
         },
         kWhole, "\"Tessor Encoded Data!\""},
        // Stored glyphs
        {[](F& f) { f.stored[67].height = 4; }, kReadable,
         "1 stored glyph's record is too small for its pixels (code 67 'C')"},
        {[](F& f) { f.stored[67].width_word = 1; }, kReadable,
         "1 stored glyph has a size without pixels (code 67 'C')"},
        {[](F& f) { f.stored[68].length = 12 + 80 + 400; }, kReadable,
         "1 stored glyph is cut short by the file's end (code 68 'D')"},
        {[](F& f) { f.stored[67].length = 100000; }, kBroken, "the file ends in its 2 stored glyphs"},
        // Blocks
        {[](F& f) { f.header.aux_block_size = -5; }, kBroken, "its auxiliary block has a negative size, -5"},
        {[](F& f) { f.sample->b = {.width = -1, .height = 4}; }, kBroken, "a sample in it has a negative size"},
        {[](F& f) { f.sample->b = {.width = 0, .height = 4}; }, kBroken, "a sample in it has rows of no bytes"},
        {[](F& f) { f.header.encoding_size = 1U << 30; }, kBroken, "its encoding data is cut short"},
        {[](F& f) { f.encoding.resize(5 << 20); }, kBroken,
         "its encoding data of 5,242,880 bytes exceeds the limit of 4,194,304 bytes"},
        {[](F& f) { f.tail = {1}; }, kReadable, "1 byte after the last section"},
    };
    ExpectReports<F>(kCases, &GoodFont, &Inspect);
}

}  // namespace

}  // namespace zel::test
