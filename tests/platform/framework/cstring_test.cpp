#include "platform/framework/cstring.h"

#include <string>

#include <gtest/gtest.h>

namespace zel::test {

namespace {

TEST(CStringSharing, EndsWhenOneOfThemChanges) {
    const CString text("PROMO");
    CString changed = text, appended = text, buffered = text, emptied = text;
    changed.SetAt(0, 'X');
    appended += '!';
    buffered.GetBuffer(0)[4] = 'E';
    buffered.ReleaseBuffer();
    emptied.Empty();
    EXPECT_STREQ(text, "PROMO");
    EXPECT_STREQ(changed, "XROMO");
    EXPECT_STREQ(appended, "PROMO!");
    EXPECT_STREQ(buffered, "PROME");
    EXPECT_TRUE(emptied.IsEmpty());
}

TEST(CStringSharing, SurvivesAssignmentToItselfAndOfItsOwnPart) {
    CString text("MACHINE");
    const CString& same = text;
    text = same;
    EXPECT_STREQ(text, "MACHINE");
    text = text.GetString() + 3;
    EXPECT_STREQ(text, "HINE");
    text += text;
    text += text.GetString() + 4;
    EXPECT_STREQ(text, "HINEHINEHINE");
    text.Format("%s/%s", text.Left(2).GetString(), text.GetString());
    EXPECT_STREQ(text, "HI/HINEHINEHINE");
}

TEST(CStringConstruction, TakesNullLengthsAndRepeats) {
    EXPECT_EQ(CString(static_cast<const char*>(nullptr)).GetLength(), 0);
    EXPECT_STREQ(CString("abcdef", 3), "abc");
    EXPECT_STREQ(CString("abc", -1), "");
    EXPECT_STREQ(CString('-', 3), "---");
    EXPECT_STREQ("a" + CString("b") + 'c' + "d" + CString("e"), "abcde");
    EXPECT_EQ(CString("a\0b", 3).GetLength(), 3);
}

TEST(CStringPart, IsLimitedToTheText) {
    const CString text("abcd");
    EXPECT_STREQ(text.Left(2), "ab");
    EXPECT_STREQ(text.Left(9), "abcd");
    EXPECT_STREQ(text.Left(-1), "");
    EXPECT_STREQ(text.Right(3), "bcd");
    EXPECT_STREQ(text.Right(-3), "");
    EXPECT_STREQ(text.Mid(1, 2), "bc");
    EXPECT_STREQ(text.Mid(2), "cd");
    EXPECT_STREQ(text.Mid(3, 0x7FFFFFFF), "d") << "a count that would wrap";
    EXPECT_STREQ(text.Mid(5), "");
    EXPECT_STREQ(text.Mid(-2, 1), "a");
}

TEST(CStringSearch, FindsCharactersAndTexts) {
    const CString path("\\a\\b.0012");
    EXPECT_EQ(path.Find('\\'), 0);
    EXPECT_EQ(path.Find('\\', 1), 2);
    EXPECT_EQ(path.Find('x'), -1);
    EXPECT_EQ(path.Find('\\', 99), -1);
    EXPECT_EQ(path.Find(".00"), 4);
    EXPECT_EQ(path.Find(".00", 5), -1);
    EXPECT_EQ(path.ReverseFind('\\'), 2);
    EXPECT_EQ(CString().ReverseFind('\\'), -1);
    EXPECT_EQ(path[99], '\0');
}

TEST(CStringComparison, ComparesBytes) {
    EXPECT_TRUE(CString("a") == "a" && "a" == CString("a") && CString("a") != CString("A"));
    EXPECT_TRUE(CString("A") < CString("a") && !(CString("b") < "a"));
    EXPECT_GT(CString("\xE4").Compare("z"), 0);
}

TEST(CStringFormat, HasNoLimit) {
    CString text;
    text.Format("%s\\.%04d", std::string(2000, 'd').c_str(), 12);
    EXPECT_EQ(text.GetLength(), 2006);
    EXPECT_STREQ(text.Right(6), "\\.0012");
}

TEST(CStringBuffer, TakesItsLengthFromTheWrittenText) {
    CString text;
    std::snprintf(text.GetBuffer(20), 21, "written");
    text.ReleaseBuffer();
    EXPECT_STREQ(text, "written");
    text.ReleaseBuffer(3);
    EXPECT_STREQ(text, "wri");
    text.GetBufferSetLength(80)[79] = 'x';
    EXPECT_EQ(text.GetLength(), 80);
    EXPECT_EQ(text[79], 'x');
    text.ReleaseBuffer(1 << 30);
    EXPECT_LT(text.GetLength(), 1 << 10) << "a length is limited to the buffer";
}

}  // namespace

}  // namespace zel::test
