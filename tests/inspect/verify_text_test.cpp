#include "inspect/verify_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "inspect/font_use.h"
#include "inspect/inspect.h"
#include "support/sample_files.h"

namespace zel::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

inspect::FileReport Verified(const files::MessageFile& message, const std::string& name = ".0012") {
    return inspect::InspectBytes(files::WriteMessage(message), name, inspect::Depth::kEveryByte);
}

TEST(VerifyText, NamesOffsetFieldValueRuleAndEffect) {
    files::MessageFile message = GoodMessage();
    message.rows[0].cells[2].next_char = 9;
    message.tabs->fields[1].tab_row = 9;
    message.tail = {1, 0};
    message.header.word_14 = 7;
    EXPECT_EQ(inspect::VerifyText(Verified(message), false),
              R"(.0012: message, readable; 4 faults; 2 notes
  fault  0x00EB (235)  row 0, record 2: next_char is 9; rule: a record below char_count that is not in the chain yet; import follows the chain to char_count, or to 63; a record without character is code 0 of slot 0
  fault  0x00EC (236)  row 0, record 3: 8 bytes; rule: the chain includes every record; import leaves the character out
  fault  0x1178 (4472)  tab field 1: tab_row is 9; rule: a row of the message; import leaves the field out
  fault  0x117C (4476)  2 bytes; rule: nothing follows the last section; import ignores it
  note   0x0540 (1344)  background: 3,074 bytes; a background; import leaves it out
  note   0x00A6 (166)  not zero, though nothing reads it: message header: word at 14
)");
}

TEST(VerifyText, GathersTheSameFaultInOneLineUnlessEveryPlaceIsAsked) {
    files::MessageFile message = GoodMessage();
    for (files::CharCell& cell : message.rows[1].cells) cell.char_font = 20;
    message.background.reset();
    message.tabs.reset();
    const inspect::FileReport report = Verified(message);
    const std::string brief = inspect::VerifyText(report, false), all = inspect::VerifyText(report, true);
    EXPECT_THAT(brief, HasSubstr("  fault  0x0100 (256)  7 characters, first row 1, record 0: char_font is 20; rule: a "
                                 "slot, 0 to 15; import leaves the character out; also at 0x0108, 0x0110, 0x0118, "
                                 "0x0120 and 2 more\n"));
    EXPECT_EQ(std::ranges::count(brief, '\n'), 2);
    EXPECT_THAT(all, HasSubstr("           0x0130 (304)  row 1, record 6: char_font is 20\n"));
    EXPECT_EQ(std::ranges::count(all, '\n'), 9);
}

TEST(VerifyText, GathersTheChainsOfAllRows) {
    files::MessageFile message = GoodMessage();
    for (files::RowText* const row : {&message.rows[0], &message.rows[1]}) row->cells[1].next_char = 63;
    EXPECT_THAT(inspect::VerifyText(Verified(message), false),
                HasSubstr("  fault  0x00E3 (227)  2 characters, first row 0, record 1: next_char is 63; "));
}

/// Faults and notes of a font's blocks, each with the byte that it is about.
TEST(VerifiedFont, ReportsWhatNothingReads) {
    files::FontFile font = GoodFont();
    files::FontOffsets at;
    font.encoding.resize(font.encoding.size() + 12, 0xEE);
    font.stored[67].pixels.resize(30, 0xEE);
    font.directory[10] = {.glyph_kind = 1, .byte_1 = 5};
    font.header.word_126 = 3;
    const files::Bytes bytes = files::WriteFont(font, &at);
    const inspect::FileReport report = inspect::InspectBytes(bytes, ".0012", inspect::Depth::kEveryByte);
    EXPECT_EQ(report.verdict, inspect::Verdict::kWhole);
    using BytesAt = std::pair<std::uint64_t, std::uint64_t>;
    const auto place_of = [&](inspect::Rule rule, const char* field) {
        for (const inspect::Finding& finding : report.findings) {
            if (finding.rule == rule && (field == nullptr || std::string_view(finding.Field()) == field))
                return BytesAt(finding.places.front().offset, finding.places.front().size);
        }
        return BytesAt();
    };
    using inspect::Rule;
    EXPECT_EQ(place_of(Rule::kEncodingUsed, nullptr), BytesAt(at.encoding + 24, 12));
    EXPECT_EQ(place_of(Rule::kGlyphRest, nullptr), BytesAt(at.stored[67] + 12 + 24, 6));
    EXPECT_EQ(place_of(Rule::kGlyphKind, nullptr), BytesAt(at.directory + 100, 1));
    EXPECT_EQ(place_of(Rule::kUnreadField, "byte 1"), BytesAt(at.directory + 101, 1));
    EXPECT_EQ(place_of(Rule::kUnreadField, "word at 126"), BytesAt(at.header + 126, 2));
}

/// "disk: number" or "disk: file" of each font.
std::vector<std::string> MissingOf(const inspect::FontUse& use) {
    std::vector<std::string> fonts;
    for (const inspect::MissingFont& font : use.Missing()) fonts.push_back(font.disk + ":" + MissingFontText(font));
    return fonts;
}

std::vector<std::string> UnusedOf(const inspect::FontUse& use) {
    std::vector<std::string> fonts;
    for (const inspect::UnusedFont& font : use.Unused()) fonts.push_back(font.disk + ":" + font.file);
    return fonts;
}

TEST(FontUse, FindsTheFontsOfEachDiskAsAnImportDoes) {
    inspect::FontUse use;
    const inspect::FileReport message = Verified(GoodMessage());  // names 12 and 31
    const inspect::FileReport font = inspect::InspectBytes(files::WriteFont(GoodFont()), "");
    files::Bytes cut = files::WriteFont(GoodFont());
    cut.resize(1000);
    const inspect::FileReport broken = inspect::InspectBytes(cut, "");
    use.Add(message, "A/MESSAGES/.0001");
    use.Add(message, "A/MESSAGES/.0002");
    use.Add(font, "A/MACHINE/.0012");
    use.Add(font, "A/MACHINE/.12");
    use.Add(font, "A/MACHINE/.99");
    use.Add(font, "A/MACHINE/.00031");
    use.Add(message, "B/messages/.0001");
    use.Add(font, "B/machine/.31");
    use.Add(broken, "B/machine/.0012");
    use.Add(message, "loose.0001");
    EXPECT_THAT(MissingOf(use), ElementsAre("A:font 31 is missing; used by A/MESSAGES/.0001, A/MESSAGES/.0002",
                                            "B:font 12 can't be read (B/machine/.0012); used by B/messages/.0001"));
    EXPECT_THAT(UnusedOf(use), ElementsAre("A:A/MACHINE/.00031", "A:A/MACHINE/.12", "A:A/MACHINE/.99"));
}

}  // namespace

}  // namespace zel::test
