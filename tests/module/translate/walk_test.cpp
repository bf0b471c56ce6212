// The walk over a message's characters, and the arguments of the host's callback.
#include <gmock/gmock.h>

#include "module/contract/zel_message.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using files::CharCell;
using files::MessageFile;
using files::RowText;
using module_test::CharCall;
using module_test::FontSet;
using module_test::MessageOf;
using module_test::ModuleTest;
using module_test::OpenDialog;
using module_test::PlainFont;
using module_test::SolidGlyph;
using testing::ElementsAre;

/// Font 1 in slot 0: run-coded A, B and C, stored S 6 wide and 4 high with the flag; its rows' top is 12.
class Walk : public ModuleTest {
  protected:
    Walk() {
        font = PlainFont("Fam Regular");
        font.header.row_top_offset = 10;
        font.header.row_inset = 2;
        font.header.edge_type = 2;
        font.header.edge_direction = 3;
        font.header.edge_size = 6;
        font.AddStored('S', SolidGlyph(6, 4, 0x8000), 20, 9);
    }
    /// Writes the font and reads it into a slot.
    void LoadFont(int slot) {
        WriteFont(1, font);
        CString path("D:\\MACHINE");
        ASSERT_EQ(fonts.ReadFont(path, 1, slot, false), 1);
    }
    void Run(const MessageFile& file, bool baseline_align = true, bool tt_convert = false) {
        WriteMessage(file);
        CZelMessage message("", "D:\\MESSAGES", ".0001", &dialog);
        ASSERT_TRUE(message.ReadMessage(&dialog));
        if (fonts.m_Slots[0].font_header == nullptr) LoadFont(0);
        chars.clear();
        message.EmitCharacters(&Host(), &fonts, baseline_align, tt_convert);
    }
    static RowText Row(std::string_view text, const CharCell& like = {}) {
        RowText row = files::RowFromText(100, text, 50, 20, like);
        row.row_top = 15;
        row.row_bottom = 45;
        return row;
    }
    std::string Text() const {
        std::string text;
        for (const CharCall& call : chars) text += call.character == 13 ? '\n' : static_cast<char>(call.character);
        return text;
    }
    template <typename Field>
    std::vector<int> All(Field tag_CharInf::*field) const {
        std::vector<int> values;
        for (const CharCall& call : chars) values.push_back(static_cast<int>(call.info.*field));
        return values;
    }

    OpenDialog dialog{nullptr};
    FontSet fonts;
    files::FontFile font;
};

TEST_F(Walk, FollowsTheChainOfEachRow) {
    RowText shuffled = Row("ABC");
    files::ShuffleRecords(shuffled, std::vector<unsigned>{2, 0, 1});
    Run(MessageOf({Row("AB"), files::EmptyRow(200), Row(""), shuffled}));
    EXPECT_EQ(Text(), "AB\nABC");
    EXPECT_THAT(All(&tag_CharInf::row_index), ElementsAre(0, 0, 1, 3, 3, 3));
    EXPECT_THAT(All(&tag_CharInf::row_start), ElementsAre(1, 0, 1, 1, 0, 0));
    EXPECT_THAT(All(&tag_CharInf::message_start), ElementsAre(1, 0, 0, 0, 0, 0));
    EXPECT_THAT(All(&tag_CharInf::x), ElementsAre(57, 77, 7, 57, 77, 97));
    EXPECT_THAT(All(&tag_CharInf::y), ElementsAre(80, 80, 180, 80, 80, 80));
    EXPECT_THAT(All(&tag_CharInf::slot), ElementsAre(0, 0, -1, 0, 0, 0));
    EXPECT_THAT(All(&tag_CharInf::glyph_step), ElementsAre(20, 4, 4, 20, 20, 4)) << "the last is the glyph's width";
    EXPECT_EQ(fonts.m_Palette[1 + 7 * 32 + 1], 0xD9D9FFD9U) << "the message's palette";
}

TEST_F(Walk, EmptyRowIsOneCallThatKeepsOtherFields) {
    MessageFile file = MessageOf({files::EmptyRow(30), Row("B"), files::EmptyRow(40)});
    file.header.frame_left = 33;
    file.rows[2].row_top = 4;
    file.rows[2].row_bottom = 3;
    Run(file);
    ASSERT_EQ(Text(), "\nB\n");
    EXPECT_THAT(All(&tag_CharInf::x), ElementsAre(40, 57, 40));
    EXPECT_THAT(All(&tag_CharInf::y), ElementsAre(10, 80, 20));
    EXPECT_THAT(All(&tag_CharInf::slot), ElementsAre(-1, 0, -1));
    EXPECT_THAT(All(&tag_CharInf::place_flag), ElementsAre(1, 1, 1));
    EXPECT_THAT(All(&tag_CharInf::left_margin), ElementsAre(33, 33, 33));
    EXPECT_THAT(All(&tag_CharInf::row_depth), ElementsAre(0, 30, -1));
    EXPECT_THAT(All(&tag_CharInf::message_start), ElementsAre(1, 1, 0)) << "a row without characters doesn't clear it";
    EXPECT_THAT(All(&tag_CharInf::char_code), ElementsAre(0, 'B', 'B'));
    EXPECT_THAT(All(&tag_CharInf::edge_size), ElementsAre(0, 6, 6));
    EXPECT_EQ(chars[2].info.font_copy, nullptr);
}

struct FormCase {
    const char* name;
    bool baseline_align, tt_convert;
    std::vector<int> base_shift, colour_set, place_flag, bitmap_form;
};

TEST_F(Walk, FormDependsOnTheGlyphAndTtConvert) {
    // base shift: 30 minus the glyph's top, minus 3, the difference between row_top and that of the font
    const FormCase kCases[] = {
        {"bitmap form", true, false, {17, 7, 17}, {5, -1, 5}, {1, 1, 1}, {1, 1, 1}},
        {"without baseline align too", false, false, {17, 7, 17}, {5, -1, 5}, {1, 1, 1}, {1, 1, 1}},
        {"text form on the baseline", true, true, {0, 7, 0}, {-1, -1, -1}, {1, 1, 0}, {0, 1, 0}},
        {"text form without it", false, true, {17, 7, 17}, {-1, -1, -1}, {1, 1, 0}, {0, 1, 0}},
    };
    dialog.m_mapBitStreamFamily.SetAt("Fam", "Fam BT");
    dialog.m_mapTypeFace.SetAt("Fam BT", "Installed");
    for (const FormCase& row : kCases) {
        SCOPED_TRACE(row.name);
        CharCell cell;
        cell.char_y = 30;
        cell.colour_set = 5;
        fonts.Clear();
        Run(MessageOf({Row("ASB", cell)}), row.baseline_align, row.tt_convert);
        ASSERT_EQ(Text(), "ASB");
        EXPECT_EQ(All(&tag_CharInf::base_shift), row.base_shift);
        EXPECT_EQ(All(&tag_CharInf::colour_set), row.colour_set);
        EXPECT_EQ(All(&tag_CharInf::place_flag), row.place_flag);
        EXPECT_THAT(All(&tag_CharInf::mf_flag), ElementsAre(0, 1, 0)) << "the stored glyph's, for that glyph only";
        for (std::size_t i = 0; i < 3; ++i) {
            const CharCall& call = chars[i];
            const bool bitmap = row.bitmap_form[i] != 0;
            EXPECT_EQ(call.info.font_copy, bitmap ? fonts.m_Slots[0].font_copy : nullptr);
            EXPECT_STREQ(call.log_font.lfFaceName, bitmap ? "Zelmara! (0) Fam Regular" : "Installed");
            EXPECT_EQ(call.log_font.lfPitchAndFamily, 34);
            EXPECT_EQ(call.log_font.lfHeight, 40) << "(40 - 6) * 1.18";
        }
        EXPECT_EQ(chars[1].info.glyph_height, 4);
        EXPECT_EQ(chars[1].info.glyph_y, 31) << "one more for a stored glyph";
        EXPECT_EQ(chars[2].info.glyph_height, 4) << "run-coded, or kept from the glyph before";
        EXPECT_EQ(chars[2].info.glyph_y, row.tt_convert ? 31 : 30);
        EXPECT_THAT(All(&tag_CharInf::glyph_metric), ElementsAre(5, 9, 5));
    }
}

TEST_F(Walk, FieldsOfFontRowAndPalette) {
    CharCell cell;
    cell.place_flag = true;
    cell.colour_set = 2;
    Run(MessageOf({Row("A", cell)}), true, true);
    const tag_CharInf& info = chars[0].info;
    EXPECT_EQ(info.row_top, 15);
    EXPECT_EQ(info.row_depth, 30);
    EXPECT_EQ(info.face_colour, 0xBF0000U);
    EXPECT_EQ(info.edge_colour, 0x800000U);
    EXPECT_EQ(info.effect_ratio, 0.75F);
    EXPECT_THAT((std::vector<int>{info.edge_type, info.edge_angle, info.edge_size, info.reserved_zero}),
                ElementsAre(2, 270, 6, 0));
}

struct DropCase {
    const char* name;
    void (*change)(RowText&);
    std::vector<int> codes;
};

TEST_F(Walk, CharactersThatCannotBeShown) {
    const DropCase kCases[] = {
        {"a font of 16 or more is skipped", [](RowText& r) { r.cells[1].char_font = 20; }, {'A', 'C'}},
        {"an empty slot ends the row", [](RowText& r) { r.cells[1].char_font = 15; }, {'A'}},
        {"a code keeps its ten bits", [](RowText& r) { r.cells[1].char_code = 0x141; }, {'A', 0x141, 'C'}},
        {"a chain that reaches 63 early", [](RowText& r) { r.cells[1].next_char = 63; }, {'A', 'B'}},
        {"a first record of 63", [](RowText& r) { r.first_char = 63; }, {}},
        {"a chain that loops ends by its count", [](RowText& r) { r.cells[1].next_char = 0; }, {'A', 'B', 'A'}},
        {"a record beyond the count is all zeros",
         [](RowText& r) { r.char_count = 4, r.cells[2].next_char = 62; },
         {'A', 'B', 'C', 0}},
    };
    for (const DropCase& row : kCases) {
        SCOPED_TRACE(row.name);
        RowText text = Row("ABC");
        row.change(text);
        fonts.Clear();
        Run(MessageOf({text}));
        std::string characters;
        std::vector<int> starts;  // the callback receives the low 8 bits; record 0 starts the row
        for (const int code : row.codes) {
            characters += static_cast<char>(code);
            starts.push_back(code == 'A' ? 1 : 0);
        }
        EXPECT_EQ(All(&tag_CharInf::char_code), row.codes);
        EXPECT_EQ(All(&tag_CharInf::row_start), starts);
        EXPECT_EQ(Text(), characters);
    }
}

TEST_F(Walk, CodeBeyondTheDirectoryIsACharacterWithoutGlyph) {
    RowText row = Row("AC");
    row.cells[0].char_code = 200;
    row.cells[0].char_y = 9;
    Run(MessageOf({row}));
    const tag_CharInf& info = chars[0].info;
    EXPECT_EQ(info.glyph_height, 0);
    EXPECT_EQ(info.glyph_metric, 0);
    EXPECT_EQ(info.base_shift, 9 - 3);
    EXPECT_EQ(info.glyph_step, 20);
}

TEST_F(Walk, FontInNoMapUsesTheLastLookUp) {
    dialog.m_mapBitStreamFamily.SetAt("Fam", "Fam bold BT");
    font.header.font_name = "Unknown";
    LoadFont(1);
    font.header.font_name = "Fam Regular";
    RowText row = Row("ABC");
    row.cells[0].char_font = row.cells[2].char_font = 1;
    Run(MessageOf({row}), true, true);
    std::vector<int> weights;
    for (const CharCall& call : chars) weights.push_back(call.log_font.lfWeight);
    EXPECT_THAT(weights, ElementsAre(400, 700, 700));
}

}  // namespace

}  // namespace zel::test
