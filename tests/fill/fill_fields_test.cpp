#include "fill/fill_fields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/font_writer.h"

namespace zel::fill {
namespace {

using files::CharCell;
using files::RowText;
using testing::HasSubstr;

/// Advances of 10 for A to Z and 6 for the blank; the letters' tops are 8 lines.
FontMetrics Font(int number, unsigned top, int widths = 10) {
    files::FontFile file;
    file.header.font_height = 30;
    file.header.row_top_offset = static_cast<int>(top) - 1;
    file.header.row_inset = 1;
    for (unsigned code = 'A'; code <= 'Z'; ++code) {
        file.AddRunCoded(code, {files::ColourRun(1, 255, 8), files::EndOfLine(), files::EndOfGlyph()}, 8,
                         static_cast<unsigned>(widths));
    }
    file.directory[32].glyph_metric = 6;
    return *MeasureFont(files::WriteFont(file), number);
}

FontSet Fonts() {
    FontSet fonts;
    fonts[0] = Font(12, 4);
    fonts[2] = Font(31, 9, 0);
    return fonts;
}

/// "XX" before the field, "AB" in it and "YY" behind it.
RowText Row() {
    RowText row = files::RowFromText(60, "XXABYY", 100, 20, {.char_y = 40});
    row.row_top = 4;
    row.row_bottom = 33;
    for (const unsigned n : {2U, 3U}) row.cells[n].colour_set = 5;
    row.cells[2].place_flag = true;
    return row;
}

files::TabField Tab(unsigned start, unsigned end, unsigned font = 0, const char* name = "NAME") {
    return {.tab_start = start, .tab_end = end, .tab_name = name, .tab_font = font, .tab_colour = 11};
}

Form FormOf(RowText row, std::vector<files::TabField> tabs) {
    files::MessageFile message;
    message.header.font_numbers[0] = 12;
    message.header.font_numbers[1] = 77;
    message.header.font_numbers[2] = 31;
    message.rows.push_back(std::move(row));
    message.tabs.emplace();
    message.tabs->fields = std::move(tabs);
    return MakeForm(message, Fonts());
}

/// What a text's characters look like.
std::vector<CharCell> Cells(std::string_view text, unsigned x, unsigned advance, CharCell like) {
    return files::RowFromText(0, text, x, advance, like).cells;
}

RowText Chained(RowText row) {
    files::ChainInOrder(row);
    return row;
}

/// The row after filling its first field, as bytes, with the faults.
std::string FilledRow(const Form& form, const char* text, Overflow overflow = Overflow::kError) {
    const FieldValue value{0, text};
    const Filled filled = FillFields(form, {&value, 1}, overflow);
    std::string result;
    for (const FieldNote& fault : filled.faults) result += "fault: " + fault.text + '\n';
    for (const FieldNote& note : filled.notes) result += "note: " + note.text + '\n';
    files::MessageFile only_row;
    only_row.rows = filled.message.rows;
    // Everything else stays.
    files::MessageFile rest = filled.message;
    rest.rows = form.message.rows;
    EXPECT_EQ(files::WriteMessage(rest), files::WriteMessage(form.message));
    for (const std::uint8_t byte : files::WriteMessage(only_row)) result += static_cast<char>(byte);
    return result;
}

std::string RowBytes(const RowText& row) {
    files::MessageFile message;
    message.rows.push_back(row);
    const files::Bytes bytes = files::WriteMessage(message);
    return {bytes.begin(), bytes.end()};
}

constexpr CharCell kNew{.colour_set = 3, .char_y = 40};

TEST(FillFields, ReplacesATextInPlaceAsTheWritersMakeIt) {
    RowText expected = Row();
    auto cells = Cells("DEF", 147, 10, kNew);
    cells[0].place_flag = true;
    expected.cells.erase(expected.cells.begin() + 2, expected.cells.begin() + 4);
    expected.cells.insert(expected.cells.begin() + 2, cells.begin(), cells.end());
    EXPECT_EQ(FilledRow(FormOf(Row(), {Tab(140, 170)}), "DEF"), RowBytes(Chained(expected)));

    // Other orders of the records: the new ones come first in the file, and stay third in the chain.
    RowText shuffled = Row();
    const unsigned places[] = {5, 2, 1, 0, 3, 4};
    files::ShuffleRecords(shuffled, places);
    for (CharCell& cell : shuffled.cells) cell.chain_end = cell.next_char == 63;
    RowText row = Row();
    row.cells = {cells[0], cells[1], cells[2], Row().cells[1], Row().cells[4], Row().cells[5], Row().cells[0]};
    const unsigned next[] = {1, 2, 4, 0, 5, 63, 3};
    for (std::size_t n = 0; n < row.cells.size(); ++n) {
        row.cells[n].next_char = next[n];
        row.cells[n].chain_end = next[n] == 63;
    }
    row.first_char = 6;
    EXPECT_EQ(FilledRow(FormOf(shuffled, {Tab(140, 170)}), "DEF"), RowBytes(row));
}

TEST(FillFields, PutsATextWithoutAnEarlierOneLast) {
    RowText expected = Row();
    const auto cells = Cells("DE", 307, 10, kNew);
    expected.cells.insert(expected.cells.end(), cells.begin(), cells.end());
    EXPECT_EQ(FilledRow(FormOf(Row(), {Tab(300, 400)}), "DE"), RowBytes(Chained(expected)));

    // In another font, whose glyphs have no glyph_metric: their widths count, and the baseline is the row's.
    expected = Row();
    const auto other = Cells("DE", 307, 8, {.colour_set = 3, .char_y = 40 + 4 - 9, .char_font = 2});
    expected.cells.insert(expected.cells.end(), other.begin(), other.end());
    EXPECT_EQ(FilledRow(FormOf(Row(), {Tab(300, 400, 2)}), "DE"), RowBytes(Chained(expected)));
}

TEST(FillFields, OpensAndClosesRows) {
    RowText empty = files::EmptyRow(60);
    empty.row_top = 1;
    empty.row_bottom = 90;
    RowText expected = Chained({.row_y = 60, .row_top = 4, .row_bottom = 33, .cells = Cells("D", 147, 10, kNew)});
    expected.cells[0].char_y = 4 + 8;
    EXPECT_EQ(FilledRow(FormOf(empty, {Tab(140, 170)}), "D"), RowBytes(expected));
    empty.row_bottom = 20;  // lower limits stay
    expected.row_bottom = 20;
    EXPECT_EQ(FilledRow(FormOf(empty, {Tab(140, 170)}), "D"), RowBytes(expected));

    RowText closed = Row();
    closed.cells.clear();
    closed.row_empty = true;
    EXPECT_EQ(FilledRow(FormOf(Row(), {Tab(90, 400)}), ""), RowBytes(closed));
    EXPECT_EQ(FilledRow(FormOf(Row(), {Tab(300, 400)}), ""), RowBytes(Row()));
}

TEST(FillFields, FindsTheFontOfAFieldByItsRow) {
    RowText row = Row();
    row.row_top = 9;
    row.row_bottom = 33;
    EXPECT_EQ(FormOf(row, {Tab(300, 400, 20)}).fields[0].slot, 2U);
    // The last font that was found, then none at all.
    row.row_top = 99;
    const Form form = FormOf(row, {Tab(100, 400, 17), Tab(100, 400, 2, "B"), Tab(100, 400, 17, "C")});
    EXPECT_EQ(form.fields[2].slot, 2U);
    EXPECT_THAT(FilledRow(form, "D"), HasSubstr("fault: no font of the message has the limits of row 0\n"));
}

TEST(FillFields, SetsWhatFitsIntoAField) {
    struct {
        const char* text;
        Overflow overflow;
        unsigned end;
        std::vector<unsigned> x;  // empty: a fault
        const char* said;
    } const cases[] = {
        {"ABC", Overflow::kError, 330, {307, 317, 327}, ""},
        {"ABC", Overflow::kError, 329, {}, "fault: the text is 30 pixels wide, and the field has room for 29\n"},
        {"A ", Overflow::kError, 316, {}, "fault: its last character would begin after the field's end\n"},
        {"ABC", Overflow::kCut, 329, {307, 317}, "note: cut to the first 2 of 3 characters\n"},
        {"A BC", Overflow::kSqueeze, 326, {307, 313, 317, 323}, ""},
        {"ABC", Overflow::kSqueeze, 320, {307, 312, 317}, ""},
        {"ABC", Overflow::kSqueeze, 319, {}, "half of their distances"},
        {"A", Overflow::kSqueeze, 309, {}, "fault: "},
        {"A", Overflow::kCut, 309, {}, "fault: "},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZABCDEFGHIJKLMNOPQRSTUVWXYZABCDEF",
         Overflow::kError,
         1000,
         {},
         "fault: the text has 58 characters, and its row has room for 57\n"},
        {"A", Overflow::kError, 65535, {307}, ""},
    };
    for (const auto& row : cases) {
        const Form form = FormOf(Row(), {Tab(300, row.end)});
        RowText expected = Row();
        std::size_t n = 0;
        for (const unsigned x : row.x) {
            expected.cells.push_back(kNew);
            expected.cells.back().char_x = x;
            expected.cells.back().char_code = static_cast<unsigned char>(row.text[n++]);
        }
        const std::string filled = FilledRow(form, row.text, row.overflow);
        EXPECT_THAT(filled, HasSubstr(row.said)) << row.text << row.end;
        EXPECT_THAT(filled, HasSubstr(RowBytes(Chained(expected)))) << row.text << row.end;
    }
}

TEST(FillFields, ReportsWhatCantBeSet) {
    RowText loop = Row();
    loop.cells[3].next_char = 1;
    struct {
        RowText row;
        unsigned font;
        const char* text;
        const char* fault;
    } const cases[] = {
        {Row(), 0, "A\xE2\x82\xAC\xC3\x84\nA\xE2\x82\xAC",
         "fault: font 12 \"\" has no glyph for \"\xE2\x82\xAC\" (U+20AC), \"\xC3\x84\" (U+00C4), U+000A\n"},
        {Row(), 1, "A", "fault: font 77 was not found, or can't be read\n"},
        {Row(), 3, "A", "fault: slot 3 of the message has no font\n"},
        {loop, 0, "A", "fault: the characters of row 0 aren't linked one after another\n"},
        {loop, 0, "", "fault: the characters of row 0 aren't linked one after another\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FilledRow(FormOf(c.row, {Tab(140, 170, c.font)}), c.text), c.fault + RowBytes(c.row));
}

TEST(FillFields, FillsOverlappingFieldsInTheirOrder) {
    const Form form = FormOf(Row(), {Tab(140, 170), Tab(140, 300, 0, "ALL")});
    const FieldValue both[] = {{1, "Q"}, {0, "DE"}}, emptied[] = {{0, "DE"}, {1, ""}};
    const Filled filled = FillFields(form, both, Overflow::kError);
    EXPECT_EQ(PresentText(filled.message, form.fields[1]), "Q");
    ASSERT_EQ(filled.notes.size(), 1U);
    EXPECT_EQ(filled.notes[0].text, "replaces text of the overlapping field NAME");
    // The characters behind the first field go, the new ones stay.
    EXPECT_EQ(PresentText(FillFields(form, emptied, Overflow::kError).message, form.fields[1]), "DE");
}

TEST(Fields, AreNamedByNamesOfTheirOwnAndByNumbers) {
    files::TabField terminated = Tab(100, 200);
    terminated.tab_name = std::string(
        "Stra\xDF"
        "e\0rest",
        11);
    files::TabField backwards = Tab(200, 100), beyond = Tab(100, 200);
    beyond.tab_row = 1;
    const Form form = FormOf(
        Row(), {terminated, backwards, beyond, Tab(1, 9, 0, "TWICE"), Tab(1, 9, 0, "TWICE"), Tab(1, 9, 0, "un-named"),
                Tab(1, 9, 0, "f0"), Tab(1, 9, 0, "F5"), Tab(1, 9, 0, "a"), Tab(1, 9, 0, "A")});
    std::string addresses;
    for (const Field& field : form.fields) addresses += field.address + ' ';
    EXPECT_EQ(addresses,
              "Stra\xC3\x9F"
              "e f1 f2 f3 f4 F5 a A ");
    const std::pair<const char*, std::optional<std::size_t>> cases[] = {
        {" STRA\xC3\x9F"
         "E ",
         0},
        {"f0", 0},
        {"F1", 1},
        {"TWICE", {}},
        {"f4", 4},
        {"f5", 5},
        {"F5", 5},
        {"f8", {}},
        {"a", 6},
        {"A", 7},
        {" a", {}},
        {"", {}},
        {"f", {}},
        {"f1x", {}},
        {"un-named", {}},
    };
    for (const auto& [column, field] : cases) EXPECT_EQ(FindField(form, column), field) << column;
}

}  // namespace
}  // namespace zel::fill
