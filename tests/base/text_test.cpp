#include "base/text.h"

#include <gtest/gtest.h>

#include "base/field_text.h"
#include "base/fold_case.h"
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
