#include "inspect/report_text.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "inspect/inspect.h"
#include "inspect/words.h"
#include "support/sample_files.h"

namespace zel::test {

namespace {

using testing::HasSubstr;

TEST(ReportText, OfAMessageIsLaidOutForAPerson) {
    files::MessageFile message = GoodMessage();
    message.tabs->fields[1].tab_row = 9;
    const std::string text = inspect::ReportText(inspect::InspectBytes(files::WriteMessage(message), "d/.0012"));
    EXPECT_EQ(text, R"(d/.0012: message, readable, with defects
  Size        4,476 bytes, file type 702 "MESSAGE"
  Standard    NTSC, 486 lines
  Frame       left 40, top 0, right 0, bottom 0
  Fonts       slot 0: 12 (4 characters), slot 2: 31 (7 characters)
  Palette     face  #123456 #123456 #123456 #123456 #123456 #123456 #123456 #123456  the message's own
              edge  #123456 #123456 #123456 #123456 #123456 #123456 #123456 #123456
  Background  0xBBBB, 1,536 words, left out on import

  Section                     offset       bytes
  Psos file header                 0         136
  section flags                  136          16
  message header                 152          52
  rows                           204         112
  palette                        316       1,028
  background                   1,344       3,074
  tab table                    4,418          58

  3 rows, moved up by 20 lines on import
    row     y   top  bottom  slots  colours  chars  text
      0    40     0       0  0      0            4  "NEWS"
      1   100     0       0  2      3            7  "at nine"
      2   180     0       0                      0  -

  2 tab fields
    name      start   end   row  slot  colour
    NAME        100   200     1     2       0
    -           207   307     9  none       0  left out

  Defects
    - tab field 1: left out on import, it is in row 9, but the last one is 2
)");
}

TEST(ReportText, StaysWithinAScreenOrTwoForAFullMessage) {
    files::MessageFile message;
    message.header.font_numbers.fill(12345);
    for (unsigned row = 0; row < 64; ++row) {
        message.rows.push_back(files::RowFromText(row * 8, std::string(63, 'M'), 0, 10, {.char_code = 'M'}));
        for (unsigned k = 0; k < 63; ++k) message.rows.back().cells[k].char_font = k % 16;
    }
    message.tabs.emplace();
    message.tabs->fields.assign(200, {.tab_start = 9, .tab_end = 8});
    const std::string text = inspect::ReportText(inspect::InspectBytes(files::WriteMessage(message), ".0001"));
    EXPECT_LE(std::ranges::count(text, '\n'), 85);
    EXPECT_THAT(text, HasSubstr("and 40 more rows"));
    EXPECT_THAT(text, HasSubstr("and 188 more tab fields"));
    EXPECT_THAT(text, HasSubstr("and 184 more\n"));
}

TEST(ReportText, PrintsNoByteOfTheFileThatATerminalWouldObey) {
    files::MessageFile message = GoodMessage();
    message.psos.type_name = "\x1B[2J\xFF";
    message.rows[0].cells[0].char_code = 7;
    message.tabs->fields[0].tab_name = "\r\x9B";
    const std::string text = inspect::ReportText(inspect::InspectBytes(files::WriteMessage(message), "a\nb"));
    EXPECT_TRUE(std::ranges::all_of(text, [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
    EXPECT_THAT(text, HasSubstr(R"(a\x0Ab: message)"));
    EXPECT_THAT(text, HasSubstr(R"("\x1B[2J\xFF")"));
    EXPECT_THAT(text, HasSubstr(R"("\x07EWS")"));
}

TEST(Words, NameWhatIsShown) {
    EXPECT_EQ(inspect::Listed({"a", "b", "c"}, 2), "a, b and 1 more");
    EXPECT_EQ(inspect::CodeName(32), "32");
    EXPECT_EQ(inspect::PrintableCode('\\'), "\\x5C");
    EXPECT_EQ(inspect::PrintableCode(0x3A5), "\\x3A5");
}

}  // namespace

}  // namespace zel::test
