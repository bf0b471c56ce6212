#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "inspect/break_case.h"

namespace zel::test {

namespace {

using inspect::FileReport;
using inspect::Verdict;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

FileReport Inspect(const samples::MessageFile& message) {
    return inspect::InspectBytes(samples::WriteMessage(message), ".0012");
}

TEST(InspectMessage, TellsWhatAWholeMessageHolds) {
    const FileReport report = Inspect(GoodMessage());
    EXPECT_EQ(report.kind, inspect::FileKind::kMessage);
    EXPECT_EQ(report.verdict, Verdict::kWhole) << Lines(report.defects);
    EXPECT_THAT(report.remarks, IsEmpty());
    const inspect::MessageReport& message = *report.message;
    EXPECT_EQ(message.type_name, "MESSAGE");
    EXPECT_EQ(message.standard, VideoStandard::kNtsc);
    EXPECT_EQ(message.y_offset, 20);
    EXPECT_EQ(message.row_count, 3);
    ASSERT_EQ(message.rows.size(), 3U);
    EXPECT_EQ(message.rows[0].y, 40);
    EXPECT_THAT(message.rows[1].runs, ElementsAre("at nine"));
    EXPECT_THAT(message.rows[1].colour_sets, ElementsAre(3));
    EXPECT_TRUE(message.rows[2].empty);
    ASSERT_EQ(message.slots.size(), 2U);
    EXPECT_EQ(message.slots[1].slot, 2);
    EXPECT_EQ(message.slots[1].number, 31);
    EXPECT_EQ(message.slots[1].characters, 7);
    EXPECT_TRUE(message.own_palette);
    EXPECT_EQ(message.palette.at(7).face, 0x123456U);
    EXPECT_THAT(message.background.value_or(""), HasSubstr("0xBBBB, 1,536 words"));
    ASSERT_EQ(message.tabs.size(), 2U);
    EXPECT_EQ(message.tabs[0].name, "NAME");
    EXPECT_EQ(message.tabs[0].start, 100);
    EXPECT_EQ(message.tabs[0].slot, 2);
    EXPECT_EQ(message.tabs[1].name, "");
    EXPECT_EQ(message.tabs[1].slot, std::nullopt);
}

TEST(InspectMessage, ListsTheSectionsWithTheirPlaces) {
    samples::MessageOffsets offsets;
    samples::MessageFile message = GoodMessage();
    message.flash_font.emplace().encoding_size = 30;
    const samples::Bytes bytes = samples::WriteMessage(message, &offsets);
    const FileReport report = inspect::InspectBytes(bytes, ".0012");
    std::vector<std::uint64_t> places;
    std::uint64_t total = 0;
    for (const inspect::Section& section : report.sections) {
        places.push_back(section.offset);
        total += section.size;
        EXPECT_EQ(section.present, section.size) << section.name;
    }
    EXPECT_THAT(places, ElementsAre(0, offsets.flags, offsets.flash_font, offsets.header, offsets.rows, offsets.palette,
                                    offsets.background, offsets.tabs));
    EXPECT_EQ(total, bytes.size());
}

TEST(InspectMessage, ReadsARowAlongItsChainAndCutsTheTextWhereTheFontChanges) {
    samples::MessageFile message = GoodMessage();
    message.rows[0].cells[3].char_font = 2;
    const unsigned places[] = {3, 1, 0, 2};
    samples::ShuffleRecords(message.rows[0], places);
    const FileReport report = Inspect(message);
    EXPECT_THAT(report.message->rows[0].runs, ElementsAre("NEW", "S"));
    EXPECT_THAT(report.message->rows[0].slots, ElementsAre(0, 2));
    EXPECT_EQ(report.verdict, Verdict::kWhole);
}

using MessageCase = BreakCase<samples::MessageFile>;
class BrokenMessage : public testing::TestWithParam<MessageCase> {};

TEST_P(BrokenMessage, IsReportedWithTheReason) {
    samples::MessageFile message = GoodMessage();
    GetParam().break_it(message);
    ExpectText(Inspect(message), GetParam());
}

using M = samples::MessageFile;

INSTANTIATE_TEST_SUITE_P(
    Chains, BrokenMessage,
    testing::Values(
        MessageCase{"starts_behind_the_last_record", [](M& m) { m.rows[0].first_char = 40; }, kReadable,
                    "row 0: the chain starts at record 40, but the last one is 3; 4 records aren't reached"},
        MessageCase{"starts_at_the_end_mark", [](M& m) { m.rows[0].first_char = 63; }, kReadable,
                    "row 0: the chain starts at record 63"},
        MessageCase{"ends_before_the_count", [](M& m) { m.rows[0].cells[1].next_char = 63; }, kReadable,
                    "row 0: the chain ends at record 1 after 2 of 4 characters; 2 records aren't reached"},
        MessageCase{"leaves_the_row", [](M& m) { m.rows[0].cells[2].next_char = 9; }, kReadable,
                    "row 0: record 2 leads to record 9, but the last one is 3; 1 record isn't reached"},
        MessageCase{"loops", [](M& m) { m.rows[0].cells[2].next_char = 1; }, kReadable,
                    "row 0: the chain returns to record 1 after 3 of 4 characters"},
        MessageCase{"ends_by_the_count_whatever_the_last_link", [](M& m) { m.rows[0].cells[3].next_char = 0; }, kWhole,
                    ""}),
    [](const auto& each) { return std::string(each.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Characters, BrokenMessage,
    testing::Values(MessageCase{"a_slot_names_no_font", [](M& m) { m.header.font_numbers[2] = 65535; }, kReadable,
                                "7 characters use slot 2, which names no font (row 1)"},
                    MessageCase{"a_slot_does_not_exist", [](M& m) { m.rows[0].cells[0].char_font = 20; }, kReadable,
                                "1 character uses slot 20, but the last one is 15 (row 0)"},
                    MessageCase{"a_code_lies_behind_the_directory", [](M& m) { m.rows[1].cells[0].char_code = 192; },
                                kReadable, "1 character has a code that no font has, 192 to 255 (row 1)"},
                    MessageCase{"codes_above_255_count_by_their_low_bits",
                                [](M& m) { m.rows[1].cells[0].char_code = 0x141; }, kWhole,
                                "1 character has a code above 255"},
                    MessageCase{"an_empty_row_counts_characters", [](M& m) { m.rows[2].char_count = 5; }, kWhole,
                                "row 2 is marked empty, but counts 5 characters"}),
    [](const auto& each) { return std::string(each.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Sections, BrokenMessage,
    testing::Values(MessageCase{"a_short_palette", [](M& m) { m.palette->entries.resize(40); }, kReadable,
                                "palette: 80 of 512 words; entries from 40 on are black"},
                    MessageCase{"a_palette_without_words", [](M& m) { m.palette->entries.clear(); }, kBroken,
                                "its palette has no entries"},
                    MessageCase{"a_long_palette",
                                [](M& m) {
                                    m.palette->palette_words = 600;
                                    m.background.reset();
                                    m.tabs.reset();
                                    m.palette->entries.resize(300);
                                },
                                kReadable, "what follows is read 176 bytes early"},
                    MessageCase{"an_unknown_background", [](M& m) { m.background->tag = 0x1234; }, kBroken,
                                "its background is of an unknown kind, 0x1234"},
                    MessageCase{"a_short_background",
                                [](M& m) {
                                    m.background->words = 3;
                                    m.tabs.reset();
                                    m.section_flags = 3;
                                },
                                kBroken, "its background is cut short, 8 of 3,074 bytes present"},
                    MessageCase{"an_old_tab_table", [](M& m) { m.tabs->tab_version = 1; }, kBroken,
                                "its tab table is of version 1, but only 2 is known"},
                    MessageCase{"too_many_tabs", [](M& m) { m.tabs->tab_words = 2613; }, kBroken,
                                "its tab table has 201 records, but at most 200 are read"},
                    MessageCase{"missing_rows",
                                [](M& m) { m = {.header = {.last_row = 9}, .rows = {samples::EmptyRow(60)}}; },
                                kReadable, "rows 1 to 9 are missing"},
                    MessageCase{"bytes_behind_the_end",
                                [](M& m) {
                                    m.tail = {1, 2, 3};
                                },
                                kReadable, "3 bytes after the last section"},
                    MessageCase{"padding_behind_the_end", [](M& m) { m.tail.assign(300, 0); }, kWhole,
                                "300 bytes after the last section, at 4,476, all zero"}),
    [](const auto& each) { return std::string(each.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Tabs, BrokenMessage,
    testing::Values(MessageCase{"starts_at_its_end", [](M& m) { m.tabs->fields[0].tab_end = 93; }, kReadable,
                                "tab field 0: left out on import, its start 100 isn't left of its end 100"},
                    MessageCase{"lies_in_no_row", [](M& m) { m.tabs->fields[1].tab_row = 3; }, kReadable,
                                "tab field 1: left out on import, it is in row 3, but the last one is 2"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(InspectMessage, TellsWhichRowTheFileEndsIn) {
    samples::MessageOffsets offsets;
    samples::Bytes bytes = samples::WriteMessage(GoodMessage(), &offsets);
    bytes.resize(offsets.rows + 8 + 4 * 8 + 8 + 2 * 8 + 3);
    const FileReport report = inspect::InspectBytes(bytes, ".0012");
    EXPECT_EQ(report.verdict, Verdict::kBroken);
    EXPECT_THAT(Lines(report.defects), HasSubstr("row 1: cut short, 2 of 7 characters present\nrow 2 is missing"));
    EXPECT_THAT(Lines(report.defects), HasSubstr("rows at 204: cut short, 67 of 112 bytes present"));
    EXPECT_THAT(report.message->rows[1].runs, ElementsAre("at"));
}

TEST(InspectMessage, TellsWhatIsAmissWithAPicture) {
    const std::pair<samples::StoredGlyph, const char*> cases[] = {
        {{.width = 4, .height = 4, .pixels = samples::Bytes(64, 9), .length = 77}, "is cut short by the file's end"},
        {{.width = 4, .height = 5, .pixels = samples::Bytes(64, 9)}, "too small for its pixels"},
        {{.width = 4, .height = 0, .pixels = samples::Bytes(64, 9)}, "a size without pixels"},
        {{.width = 4, .height = 4, .pixels = samples::Bytes(65, 9), .length = 76}, "1 byte after the last section"},
    };
    for (const auto& [picture, defect] : cases) {
        const FileReport report = inspect::InspectBytes(samples::WriteRgbaFile(714, picture), ".0020");
        EXPECT_THAT(Lines(report.defects), HasSubstr(defect));
    }
}

TEST(InspectMessage, TellsAnRgbaFile) {
    const samples::StoredGlyph picture{.width = 4, .height = 4, .pixels = samples::Bytes(64, 9)};
    for (const std::uint32_t type : {714U, 717U}) {
        const FileReport report = inspect::InspectBytes(samples::WriteRgbaFile(type, picture), ".0020");
        EXPECT_EQ(report.kind, inspect::FileKind::kRgba);
        EXPECT_EQ(report.verdict, Verdict::kWhole);
        EXPECT_EQ(report.sections.back().size, 12U + 64U);
        EXPECT_EQ(report.picture->width, 4);
        EXPECT_THAT(report.defects, testing::IsEmpty());
    }
}

}  // namespace

}  // namespace zel::test
