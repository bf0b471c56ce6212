#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "inspect/break_case.h"

namespace zel::test {

namespace {

using inspect::FileReport;
using inspect::Verdict;
using testing::ElementsAre;
using testing::HasSubstr;

FileReport Inspect(const files::MessageFile& message) {
    return inspect::InspectBytes(files::WriteMessage(message), ".0012");
}

TEST(InspectMessage, ReadsARowAlongItsChainAndCutsTheTextWhereTheFontChanges) {
    files::MessageFile message = GoodMessage();
    message.rows[0].cells[3].char_font = 2;
    const unsigned places[] = {3, 1, 0, 2};
    files::ShuffleRecords(message.rows[0], places);
    const FileReport report = Inspect(message);
    EXPECT_THAT(report.message->rows[0].runs, ElementsAre("NEW", "S"));
    EXPECT_THAT(report.message->rows[0].slots, ElementsAre(0, 2));
    EXPECT_EQ(report.verdict, Verdict::kWhole);
}

TEST(InspectMessage, GivesTheReasonForEachDamage) {
    using M = files::MessageFile;
    constexpr BreakCase<M> kCases[] = {
        // Chains
        {[](M& m) { m.rows[0].first_char = 40; }, kReadable,
         "row 0: the chain starts at record 40, but the last one is 3; 1 record isn't reached"},
        {[](M& m) { m.rows[0].first_char = 63; }, kReadable, "row 0: the chain starts at record 63"},
        {[](M& m) { m.rows[0].cells[1].next_char = 63; }, kReadable,
         "row 0: the chain ends at record 1 after 2 of 4 characters; 2 records aren't reached"},
        {[](M& m) { m.rows[0].cells[2].next_char = 9; }, kReadable,
         "row 0: record 2 leads to record 9, but the last one is 3; 1 record isn't reached"},
        {[](M& m) { m.rows[0].cells[2].next_char = 1; }, kReadable,
         "row 0: the chain returns to record 1 after 3 of 4 characters"},
        {[](M& m) { m.rows[0].cells[3].next_char = 0; }, kWhole, ""},  // the count ends a chain, not its last link
        // Characters
        {[](M& m) { m.header.font_numbers[2] = 65535; }, kReadable,
         "7 characters use slot 2, which names no font (row 1)"},
        {[](M& m) { m.rows[0].cells[0].char_font = 20; }, kReadable,
         "1 character uses slot 20, but the last one is 15 (row 0)"},
        {[](M& m) { m.rows[1].cells[0].char_code = 192; }, kReadable,
         "1 character has a code that no font has, 192 to 255 (row 1)"},
        {[](M& m) { m.rows[1].cells[0].char_code = 0x141; }, kWhole, "1 character has a code above 255"},
        {[](M& m) { m.rows[2].char_count = 5; }, kWhole, "row 2 is marked empty, but counts 5 characters"},
        // Sections
        {[](M& m) { m.palette->entries.resize(40); }, kReadable,
         "palette: 80 of 512 words; entries from 40 on are black"},
        {[](M& m) { m.palette->entries.clear(); }, kBroken, "its palette has no entries"},
        {[](M& m) {
             m.palette->palette_words = 600;
             m.background.reset();
             m.tabs.reset();
             m.palette->entries.resize(300);
         },
         kReadable, "what follows is read 176 bytes early"},
        {[](M& m) { m.background->tag = 0x1234; }, kBroken, "its background is of an unknown kind, 0x1234"},
        {[](M& m) {
             m.background->words = 3;
             m.tabs.reset();
             m.section_flags = 3;
         },
         kBroken, "its background is cut short, 8 of 3,074 bytes present"},
        {[](M& m) { m.tabs->tab_version = 1; }, kBroken, "its tab table is of version 1, but only 2 is known"},
        {[](M& m) { m.tabs->tab_words = 2613; }, kBroken, "its tab table has 201 records, but at most 200 are read"},
        {[](M& m) { m = {.header = {.last_row = 9}, .rows = {files::EmptyRow(60)}}; }, kReadable,
         "rows 1 to 9 are missing"},
        {[](M& m) {
             m.tail = {1, 2, 3};
         },
         kReadable, "3 bytes after the last section"},
        {[](M& m) { m.tail.assign(300, 0); }, kWhole, "300 bytes after the last section, at 4,476, all zero"},
        // Tabs
        {[](M& m) { m.tabs->fields[0].tab_end = 93; }, kReadable,
         "tab field 0: left out on import, its start 100 isn't left of its end 100"},
        {[](M& m) { m.tabs->fields[1].tab_row = 3; }, kReadable,
         "tab field 1: left out on import, it is in row 3, but the last one is 2"},
    };
    ExpectReports<M>(kCases, &GoodMessage, &Inspect);
}

TEST(InspectMessage, ReportsTheRowInWhichTheFileEnds) {
    files::MessageOffsets offsets;
    files::Bytes bytes = files::WriteMessage(GoodMessage(), &offsets);
    bytes.resize(offsets.rows + 8 + 4 * 8 + 8 + 2 * 8 + 3);
    const FileReport report = inspect::InspectBytes(bytes, ".0012");
    EXPECT_EQ(report.verdict, Verdict::kBroken);
    EXPECT_THAT(Lines(report.defects), HasSubstr("row 1: cut short, 2 of 7 characters present\nrow 2 is missing"));
    EXPECT_THAT(Lines(report.defects), HasSubstr("rows at 204: cut short, 67 of 112 bytes present"));
    EXPECT_THAT(report.message->rows[1].runs, ElementsAre("at"));
}

files::StoredGlyph GoodPicture() {
    return {.width = 4, .height = 4, .pixels = files::Bytes(64, 9)};
}

FileReport InspectPicture(const files::StoredGlyph& picture) {
    return inspect::InspectBytes(files::WriteRgbaFile(717, picture), ".0020");
}

TEST(InspectPicture, GivesTheReasonForEachDamage) {
    using P = files::StoredGlyph;
    constexpr BreakCase<P> kCases[] = {
        {[](P&) {}, kWhole, ""},
        {[](P& p) { p.length = 77; }, kReadable, "is cut short by the file's end"},
        {[](P& p) { p.height = 5; }, kReadable, "too small for its pixels"},
        {[](P& p) { p.height = 0; }, kReadable, "a size without pixels"},
        {[](P& p) { p.pixels.push_back(9), p.length = 76; }, kReadable, "1 byte after the last section"},
    };
    ExpectReports<P>(kCases, &GoodPicture, &InspectPicture);
}

}  // namespace

}  // namespace zel::test
