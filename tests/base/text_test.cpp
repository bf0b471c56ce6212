#include "base/text.h"

#include <gtest/gtest.h>

#include "base/field_text.h"
#include "base/fold_case.h"
#include "base/terminal_text.h"
#include "base/text_columns.h"
#include "base/utf8.h"

namespace zel::test {

namespace {

TEST(FieldText, EndsAtTheFirstNulOrWithTheField) {
    EXPECT_EQ(base::FieldText({'a', '\0', 'b'}), "a");
    EXPECT_EQ(base::FieldText({'a', 'b'}), "ab");
}

TEST(Numbers, AreFilledGroupedAndCounted) {
    EXPECT_EQ(base::NumberedName(12), ".0012");
    EXPECT_EQ(base::NumberedName(12345), ".12345");
    EXPECT_EQ(base::GroupedDigits(999), "999");
    EXPECT_EQ(base::GroupedDigits(1234567), "1,234,567");
    EXPECT_EQ(base::Counted(1, "row"), "1 row");
    EXPECT_EQ(base::Counted(0, "row"), "0 rows");
    EXPECT_EQ(base::Counted(2, "entry", "entries"), "2 entries");
}

TEST(TerminalText, ShowsTheCodesOfWhatActsOnATerminalOrOnOtherCharacters) {
    struct Case {
        std::string_view text, shown;
    };
    const Case cases[] = {
        {"C:\\A caf\xC3\xA9 \xE6\x97\xA5", "C:\\A caf\xC3\xA9 \xE6\x97\xA5"},
        {std::string_view("\0\t\n\r\x1B\x7F", 6), "\\x00\\x09\\x0A\\x0D\\x1B\\x7F"},
        {"\xC2\x9B\x9B\xC3", "\\u009B\\x9B\\xC3"},
        {"\xE2\x80\xAE\xE2\x80\xA8\xEF\xBB\xBF", "\\u202E\\u2028\\uFEFF"},
        {"\xF3\xA0\x80\x81\xF0\x9F\x98\x80", "\\U000E0001\xF0\x9F\x98\x80"},
        {"\xED\xA0\x80", "\\xED\\xA0\\x80"},
        {"", ""},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(base::TerminalText(row.text), row.shown);
        EXPECT_EQ(base::TerminalText(row.shown), row.shown);
    }
    EXPECT_EQ(base::TerminalLines("a\r\nb\x07\n"), "a\\x0D\nb\\x07\n");
}

TEST(FoldedCase, IsThatOfAsciiLettersAlone) {
    EXPECT_TRUE(base::EqualsFolded("aZ[", "Az["));
    EXPECT_FALSE(base::EqualsFolded("[", "{"));
    EXPECT_FALSE(base::EqualsFolded("\xC4", "\xE4"));
    EXPECT_TRUE(base::LessFolded("a", "B"));
}

struct Utf8Case {
    const char* text;
    char32_t code;
    std::size_t size;
    bool valid;
};

TEST(Utf8, IsDecodedAsFarAsItIsValid) {
    for (const Utf8Case& row : {
             Utf8Case{"A", U'A', 1, true},
             {"\xC2\x80", 0x80, 2, true},
             {"\xE2\x82\xAC", 0x20AC, 3, true},
             {"\xF4\x8F\xBF\xBF", 0x10FFFF, 4, true},
             {"\x80", 0xFFFD, 1, false},              // begins no character
             {"\xC1\x81", 0xFFFD, 1, false},          // only of a form that is too long
             {"\xE2\x82", 0xFFFD, 1, false},          // cut short
             {"\xE2\x82\x41", 0xFFFD, 1, false},      // interrupted
             {"\xE0\x80\x80", 0xFFFD, 3, false},      // a form that is too long
             {"\xED\xA0\x80", 0xFFFD, 3, false},      // a surrogate
             {"\xF4\x90\x80\x80", 0xFFFD, 4, false},  // after the last code point
             {"\xF5\x80\x80\x80", 0xFFFD, 1, false},
         }) {
        const base::Utf8Character first = base::FirstCharacter(row.text);
        EXPECT_EQ(first.code, row.code) << row.text;
        EXPECT_EQ(first.size, row.size) << row.text;
        EXPECT_EQ(first.valid, row.valid) << row.text;
        std::string back;
        base::AppendUtf8(back, row.code);
        EXPECT_EQ(back == row.text, row.valid) << row.text;
    }
    EXPECT_EQ(base::Utf8FromLatin1("a\xE4\xFF"), "aäÿ");
}

TEST(Tables, AlignColumnsByCharacters) {
    const std::vector<std::vector<std::string>> lines = {{"ä", "1", "", "", "end"}, {"abc", "100", "", "", ""}};
    const base::ColumnStyle left, right{base::Align::kRight}, dropped{base::Align::kLeft, true};
    EXPECT_EQ(base::TableText(lines, std::vector{left, right, left, dropped, left}), "  ä      1    end\n  abc  100\n");
}

}  // namespace

}  // namespace zel::test
