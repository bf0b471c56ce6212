// Blank characters for empty tab fields.
#include <cstdlib>
#include <cstring>

#include <gmock/gmock.h>

#include "module/contract/zel_message.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::ModuleTest;
using module_test::OpenDialog;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kBox[] = "Tavro|Templates created with default font.\n";

/// A message of four rows. A test describes each font, tab field and row text in one line.
class Templates : public ModuleTest {
  protected:
    Templates() {
        m_message.m_pMsgHeader = new tag_msg_header{};
        m_message.m_pMsgHeader->last_row = 3;
        for (std::uint16_t& number : m_message.m_pMsgHeader->font_numbers) number = kNoFont;
        m_message.m_pRows = static_cast<tag_msg_row*>(std::calloc(4, sizeof(tag_msg_row)));
        m_dialog.m_pFont = &m_fonts;
    }
    ~Templates() override { m_message.m_pTabs = nullptr; }

    /// A font whose rows have these limits.
    void Font(int slot, std::uint16_t number, int group_top, int group_bottom, std::uint16_t flags = 0) {
        tag_font_header& header = m_headers[slot];
        header.row_inset = 3;
        header.row_top_offset = static_cast<std::int16_t>(group_top - 3);
        header.font_height = static_cast<std::int16_t>(group_bottom - 3 - 2);
        header.font_flags = flags;
        m_fonts.m_Slots[slot].font_header = &header;
        m_message.m_pMsgHeader->font_numbers[slot] = number;
    }
    tag_msg_row& Empty(int r, int top = 0, int bottom = 60) {
        tag_msg_row& row = Row(r);
        row.SetEmpty(true);
        row.SetTop(top);
        row.SetBottom(bottom);
        return row;
    }
    tag_msg_row& Text(int r, std::vector<int> xs, int top = 0, int bottom = 60) {
        tag_msg_row& row = Empty(r, top, bottom);
        row.SetEmpty(false);
        row.SetCharCount(static_cast<int>(xs.size()));
        for (std::size_t k = 0; k < xs.size(); ++k) {
            row.chars[k].SetX(xs[k]);
            row.chars[k].SetNext(k + 1 < xs.size() ? static_cast<int>(k + 1) : kChainEnd);
            row.chars[k].SetChainEnd(k + 1 == xs.size());
        }
        return row;
    }
    /// A tab field with the file's own ends.
    void Tab(int row, int start, int end, unsigned font, unsigned colour = 0) {
        tag_tab_field tab{};
        tab.tab_start = static_cast<std::uint16_t>(start + 7);
        tab.tab_end = static_cast<std::uint16_t>(end + 7);
        tab.tab_bits = static_cast<unsigned>(row) | font << 10 | colour << 15;
        m_tabs.push_back(tab);
    }
    void Make() {
        m_message.m_pTabs = m_tabs.data();
        m_message.m_nTabs = static_cast<std::int32_t>(m_tabs.size());
        m_message.MakeTemplates(&m_dialog);
    }
    tag_msg_row& Row(int r) { return m_message.m_pRows[r]; }
    /// "TOP-BOTTOM", then " X/FONT>NEXT" for each character; "!" marks the end of the chain.
    std::string Shown(int r) {
        const tag_msg_row& row = Row(r);
        std::string text =
            (row.Empty() ? "empty " : "") + std::to_string(row.Top()) + "-" + std::to_string(row.Bottom());
        for (const tag_msg_char& each : std::span(row.chars).first(static_cast<std::size_t>(row.CharCount()))) {
            text += " " + std::to_string(each.X()) + "/" + std::to_string(each.Font()) + ">" +
                    std::to_string(each.Next()) + ((each.word0 & 4) != 0 ? "!" : "");
        }
        return text;
    }

  private:
    OpenDialog m_dialog{nullptr};
    CZelFont m_fonts;
    CZelMessage m_message{nullptr, nullptr, nullptr, nullptr};
    tag_font_header m_headers[kFontSlots] = {};
    std::vector<tag_tab_field> m_tabs;
};

TEST_F(Templates, LimitsOfAnEmptyRowComeFromTheFieldsFont) {
    struct LimitsCase {
        const char* name;
        int bottom;
        std::uint16_t flags;
        const char* limits_after;
    };
    Tab(1, 100, 200, 3, 13);
    for (const LimitsCase& limits : {LimitsCase{"larger limits are reduced", 60, 0, "10-50"},
                                     {"a smaller bottom is kept", 40, 0, "10-40"},
                                     {"flag 0x40 keeps the limits", 60, 0x40, "4-60"},
                                     {"flag 0x10 keeps the limits", 60, 0x30, "4-60"},
                                     {"other flags are ignored", 60, 0x2F, "10-50"}}) {
        SCOPED_TRACE(limits.name);
        Font(3, 77, 10, 50, limits.flags);
        Row(1) = {};
        tag_msg_row& row = Empty(1, 4, limits.bottom);
        Make();
        EXPECT_EQ(Shown(1), std::string(limits.limits_after) + " 107/3>63!");
        EXPECT_EQ(row.FirstChar(), 0);
        const tag_msg_char& blank = row.chars[0];
        EXPECT_EQ(blank.Y(), 0);
        EXPECT_EQ(blank.ColourSet(), 5) << "the low three bits of 13";
        EXPECT_EQ(blank.word2, 0x803);
        EXPECT_EQ(blank.word3, 0xFC00);
    }
    EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Templates, FieldThatContainsTextGetsNoTemplate) {
    Font(0, 1, 10, 50);
    Text(0, {100});
    Text(1, {100});
    Text(2, {100});
    Tab(0, 90, 120, 0);
    Tab(1, 100, 100, 0);
    Tab(2, 101, 120, 0);
    Make();
    EXPECT_EQ(Row(0).CharCount(), 1);
    EXPECT_EQ(Row(1).CharCount(), 1);
    EXPECT_EQ(Shown(2), "0-60 100/0>1 108/0>63!") << "a row with text keeps its limits";
}

TEST_F(Templates, OldEndOfTheChainLinksToTheBlank) {
    Font(0, 1, 10, 50);
    Text(0, {10, 20});
    Tab(0, 100, 200, 0);
    Tab(0, 300, 400, 0);
    Make();
    EXPECT_EQ(Shown(0), "0-60 10/0>1 20/0>2 107/0>3 307/0>63!");
}

TEST_F(Templates, RowOf63CharactersIsUnchanged) {
    Text(0, std::vector<int>(63, 500));
    const tag_msg_row before = Row(0);
    Tab(0, 10, 20, 0);
    Make();
    EXPECT_EQ(std::memcmp(&before, &Row(0), sizeof before), 0);
    EXPECT_THAT(Boxes(), IsEmpty()) << "no template was made";
}

TEST_F(Templates, FieldWithoutAFontUsesTheOneThatFitsItsRow) {
    Font(2, 9, 10, 50);
    Font(5, 9, 20, 60);  // the same number: only the first slot counts
    Font(7, 8, 20, 60);
    Empty(0, 20, 60);
    Empty(1, 1, 60);  // fits none
    Tab(1, 1, 2, 20);
    Tab(0, 1, 2, 20);
    Make();
    EXPECT_EQ(Shown(0), "20-60 8/7>63!");
    EXPECT_EQ(Shown(1), "1-60 8/20>63!") << "the default leaves the limits";
    EXPECT_THAT(Boxes(), ElementsAre(kBox));
}

TEST_F(Templates, LimitsOfTheLastMatchApplyToLaterFields) {
    Font(2, 9, 10, 50);
    Empty(0);
    Empty(1);
    Empty(2, 1, 70);
    Tab(0, 1, 2, 2);
    Tab(1, 1, 2, 4);  // a slot without a font
    Make();
    EXPECT_EQ(Shown(1), "10-50 8/4>63!");
    EXPECT_THAT(Boxes(), IsEmpty());
    Tab(2, 1, 2, 31);  // no font, and a row that fits none
    Empty(0);
    Empty(1);
    Make();
    EXPECT_EQ(Shown(2), "10-50 8/2>63!");
    EXPECT_THAT(Boxes(), ElementsAre(kBox));
}

TEST_F(Templates, WithoutAnyFontShowsABoxUnlessWarningsAreSkipped) {
    Empty(0);
    Tab(0, 1, 2, 0);
    Make();
    EXPECT_EQ(Row(0).CharCount(), 1);
    EXPECT_THAT(NewBoxes(), ElementsAre(kBox));
    EXPECT_EQ(desktop.Boxes()[0].style, 48U);
    CZelFont::m_bIgnoreErrors = 1;
    Empty(0);
    Make();
    EXPECT_THAT(NewBoxes(), IsEmpty());
    EXPECT_EQ(Row(0).CharCount(), 2) << "counted from the char_count of the head";
}

}  // namespace

}  // namespace zel::test
