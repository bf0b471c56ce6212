#include "samples/message_writer.h"

#include <numeric>
#include <stdexcept>

#include <gtest/gtest.h>

#include "samples/bytes_matcher.h"

namespace zel::samples {
namespace {

using samples_test::AsBytes;
using samples_test::Hex;
using samples_test::Slice;

struct CellCase {
    const char* name;
    CharCell cell;
    const char* bytes;
};
void PrintTo(const CellCase& row, std::ostream* out) {
    *out << row.name;
}

class CharCellBits : public testing::TestWithParam<CellCase> {};
TEST_P(CharCellBits, StandWhereTheFormatPutsThem) {
    EXPECT_EQ(AsBytes(WriteCharCell(GetParam().cell)), Hex(GetParam().bytes));
}
INSTANTIATE_TEST_SUITE_P(
    Each, CharCellBits,
    testing::Values(CellCase{"b0_bit7", {.b0_bit7 = true, .next_char = 0}, "80 00 00 00 00 00 00 00"},
                    CellCase{"place_flag", {.place_flag = true, .next_char = 0}, "40 00 00 00 00 00 00 00"},
                    CellCase{"chain_end", {.chain_end = true, .next_char = 0}, "20 00 00 00 00 00 00 00"},
                    CellCase{"b0_bits4to2", {.b0_bits4to2 = 7, .next_char = 0}, "1C 00 00 00 00 00 00 00"},
                    CellCase{"char_x_at_its_most", {.char_x = 1023, .next_char = 0}, "03 FF 00 00 00 00 00 00"},
                    CellCase{"b2_bits7to6", {.b2_bits7to6 = 3, .next_char = 0}, "00 00 C0 00 00 00 00 00"},
                    CellCase{"b2_bit5", {.b2_bit5 = true, .next_char = 0}, "00 00 20 00 00 00 00 00"},
                    CellCase{"colour_set_4", {.colour_set = 4, .next_char = 0}, "00 00 10 00 00 00 00 00"},
                    CellCase{"char_y_512", {.char_y = 512, .next_char = 0}, "00 00 02 00 00 00 00 00"},
                    CellCase{"char_font_at_its_most", {.char_font = 63, .next_char = 0}, "00 00 00 00 FC 00 00 00"},
                    CellCase{"char_code_0x1A5", {.char_code = 0x1A5, .next_char = 0}, "00 00 00 00 01 A5 00 00"},
                    CellCase{"b6_word_crosses_into_b7", {.b6_word = 3, .next_char = 0}, "00 00 00 00 00 00 00 C0"},
                    CellCase{"next_char_ends_by_default", {}, "00 00 00 00 00 00 00 3F"},
                    CellCase{"a_field_too_wide_is_cut_and_spoils_no_neighbour",
                             {.char_x = 0x8401, .colour_set = 8, .next_char = 64},
                             "00 01 00 00 00 00 00 00"}),
    [](const auto& row) { return std::string(row.param.name); });

struct RowCase {
    const char* name;
    RowText row;
    const char* bytes;
};
void PrintTo(const RowCase& row, std::ostream* out) {
    *out << row.name;
}

class RowHeadBits : public testing::TestWithParam<RowCase> {};
TEST_P(RowHeadBits, StandWhereTheFormatPutsThem) {
    EXPECT_EQ(AsBytes(WriteRowHead(GetParam().row)), Hex(GetParam().bytes));
}
INSTANTIATE_TEST_SUITE_P(
    Each, RowHeadBits,
    testing::Values(RowCase{"b0_bits7and6", {.b0_bit7 = true, .b0_bit6 = true}, "C0 00 00 00 00 00 00 00"},
                    RowCase{"row_empty", {.row_empty = true}, "20 00 00 00 00 00 00 00"},
                    RowCase{"b0_bits4to2", {.b0_bits4to2 = 5}, "14 00 00 00 00 00 00 00"},
                    RowCase{"row_y_at_its_most", {.row_y = 1023}, "03 FF 00 00 00 00 00 00"},
                    RowCase{"first_char_32", {.first_char = 32}, "00 00 80 00 00 00 00 00"},
                    RowCase{"row_top_513", {.row_top = 513}, "00 00 02 01 00 00 00 00"},
                    RowCase{"char_count_of_its_own", {.char_count = 63}, "00 00 00 00 FC 00 00 00"},
                    RowCase{"char_count_from_the_records", {.cells = {{}, {}}}, "00 00 00 00 08 00 00 00"},
                    RowCase{"row_bottom_258", {.row_bottom = 258}, "00 00 00 00 01 02 00 00"},
                    RowCase{"b6_and_b7", {.b6 = 0xA5, .b7 = 0x5A}, "00 00 00 00 00 00 A5 5A"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TabFieldBytes, FollowTheTable) {
    const TabField field{.tab_start = 0x0102,
                         .tab_end = 0x0304,
                         .tab_byte = 5,
                         .tab_name = "NAME",
                         .tab_row = 33,     // 100001
                         .tab_a = 9,        // 1001
                         .tab_font = 17,    // 10001
                         .tab_colour = 10,  // 1010
                         .tab_flags = 21,   // 10101
                         .b25 = 0x77};
    EXPECT_EQ(WriteTabField(field), Hex("0102 0304 05 4E414D45 00000000 00000000 00000000 00  86 63 55 77"));
}

TEST(TabFieldBytes, HoldSeventeenCharactersOfTheName) {
    const Bytes bytes = WriteTabField({.tab_name = "abcdefghijklmnopqrst"});
    ASSERT_EQ(bytes.size(), 26u);
    EXPECT_EQ(Slice(bytes, 5, 17), AsBytes(std::string("abcdefghijklmnopq")));
}

TEST(MessageBytes, OfTheSmallestMessage) {
    MessageFile message;
    message.rows = {EmptyRow(40)};
    const Bytes bytes = WriteMessage(message);
    ASSERT_EQ(bytes.size(), 136u + 16 + 52 + 8);
    EXPECT_EQ(Slice(bytes, 0, 8), Hex("000002BE 00000000"));
    EXPECT_EQ(Slice(bytes, 136, 16), Bytes(16, 0));
    EXPECT_EQ(Slice(bytes, 152, 20), Bytes(20, 0));
    EXPECT_EQ(Slice(bytes, 172, 32), Bytes(32, 0xFF));
    EXPECT_EQ(Slice(bytes, 204, 8), Hex("2028 0000 0000 0000"));
}

TEST(MessageBytes, HaveEveryHeadFieldInItsPlace) {
    MessageFile message;
    message.psos = {0x01020304, 0x05060708, "Kind"};
    message.section_flags = 0xA5A6;
    message.more_flags = {1, 2, 3, 4, 5, 6, 7};
    message.header = {.word_0 = 0x10,
                      .word_2 = 0x12,
                      .last_row = 0x1234,
                      .frame_left = 0x16,
                      .frame_top = 0x18,
                      .frame_right = 0x1A,
                      .frame_bottom = 0x1C,
                      .word_14 = 0x1E,
                      .word_16 = 0x20,
                      .word_18 = 0x22};
    message.header.font_numbers[15] = 12;
    const Bytes bytes = WriteMessage(message);
    ASSERT_EQ(bytes.size(), 204u);
    EXPECT_EQ(Slice(bytes, 0, 13), Hex("01020304 05060708 4B696E64 00"));
    EXPECT_EQ(Slice(bytes, 136, 16), Hex("A5A6 0001 0002 0003 0004 0005 0006 0007"));
    EXPECT_EQ(Slice(bytes, 152, 20), Hex("0010 0012 1234 0016 0018 001A 001C 001E 0020 0022"));
    EXPECT_EQ(Slice(bytes, 200, 4), Hex("FFFF 000C"));
}

TEST(MessageBytes, CutATypeNameThatLeavesNoRoomForATerminator) {
    MessageFile message;
    message.psos.type_name = std::string(200, 'x');
    EXPECT_EQ(Slice(WriteMessage(message), 134, 4), Hex("7878 0000"));
}

TEST(MessageBytes, OfAllSectionsLieInTheOrderOfTheFormat) {
    MessageFile message;
    message.pal = true;
    message.flash_font = FlashFont{.encoding_size = 30, .word_table_size = 4};
    message.rows = {RowFromText(30, "AB", 100, 20), EmptyRow(60)};
    message.palette = PaletteBlock{.palette_lead = 0xABCD, .entries = {0x12345678}};
    message.background = BackgroundBlock{.tag = 0xBBBD, .value = 0x0102};
    message.tabs = TabTable{.third_word = 9, .fields = {{}, {}}};
    message.tail = {0xEE};
    MessageOffsets at;
    const Bytes bytes = WriteMessage(message, &at);
    EXPECT_EQ(Slice(bytes, at.flags, 2), Hex("8123"));
    EXPECT_EQ(at.flash_font, 152u);
    EXPECT_EQ(Slice(bytes, at.flash_font + 8 + 98, 4), Hex("0000001E"));
    EXPECT_EQ(Slice(bytes, at.flash_font + 8 + 120, 4), Hex("00000004"));
    EXPECT_EQ(at.header - at.flash_font, 2056u + 30 + 4);
    EXPECT_EQ(Slice(bytes, at.header + 4, 2), Hex("0001"));
    EXPECT_EQ(at.rows - at.header, 52u);
    EXPECT_EQ(at.palette - at.rows, 8u + 2 * 8 + 8);
    EXPECT_EQ(Slice(bytes, at.palette, 8), Hex("ABCD 0002 12345678"));
    EXPECT_EQ(at.background - at.palette, 8u);
    EXPECT_EQ(Slice(bytes, at.background, 6), Hex("BBBD 0102 0102"));
    EXPECT_EQ(at.tabs - at.background, 2u + 2 * 974);
    EXPECT_EQ(Slice(bytes, at.tabs, 6), Hex("0002 001A 0009"));
    EXPECT_EQ(at.tail - at.tabs, 6u + 2 * 26);
    EXPECT_EQ(bytes.size(), at.tail + 1);
}

TEST(MessageBytes, ClaimWhatTheyAreToldToClaim) {
    MessageFile message;
    message.header.last_row = 65535;
    message.flash_font = FlashFont{.encoding_size = 0xFFFFFFFF, .word_table_size = 1, .data_size = 0};
    message.palette = PaletteBlock{.palette_words = 600, .entries = {}};
    message.background = BackgroundBlock{.tag = 0x1234, .words = 3};
    message.tabs = TabTable{.tab_version = 3, .tab_words = 2613, .fields = {}};
    MessageOffsets at;
    const Bytes bytes = WriteMessage(message, &at);
    EXPECT_EQ(at.header - at.flash_font, 2056u);
    EXPECT_EQ(Slice(bytes, at.header + 4, 2), Hex("FFFF"));
    EXPECT_EQ(Slice(bytes, at.palette, 4), Hex("0000 0258"));
    EXPECT_EQ(at.tabs - at.background, 8u);
    EXPECT_EQ(Slice(bytes, at.tabs, 6), Hex("0003 0A35 0000"));
}

TEST(PaletteEntry, IsGreenBlueOnesRed) {
    EXPECT_EQ(PaletteEntry(0x78, 0x12, 0x34), 0x1234FF78u);
}

/// The text of a row as a reader walks it.
std::string Walk(const RowText& row) {
    std::string text;
    unsigned index = row.first_char;
    for (std::size_t n = 0; n < row.cells.size(); ++n) {
        text += static_cast<char>(row.cells.at(index).char_code);
        index = row.cells[index].next_char;
    }
    return text;
}

TEST(RowOfText, StepsByTheAdvanceAndIsChainedInOrder) {
    const RowText row = RowFromText(77, "Abc", 100, 20, {.colour_set = 3, .char_y = 40});
    ASSERT_EQ(row.cells.size(), 3u);
    EXPECT_EQ(row.row_y, 77u);
    EXPECT_EQ(row.cells[2].char_x, 140u);
    EXPECT_EQ(row.cells[2].colour_set, 3u);
    EXPECT_EQ(row.cells[2].next_char, 63u);
    EXPECT_TRUE(row.cells[2].chain_end);
    EXPECT_FALSE(row.cells[1].chain_end);
    EXPECT_EQ(Walk(row), "Abc");
}

TEST(ShuffledRecords, ReadInTheOldOrder) {
    RowText row = RowFromText(0, "SHUFFLE", 0, 10);
    const std::array<unsigned, 7> places{4, 0, 6, 1, 5, 2, 3};
    ShuffleRecords(row, places);
    EXPECT_EQ(row.first_char, 4u);
    EXPECT_EQ(row.cells[0].char_code, unsigned{'H'});
    EXPECT_EQ(Walk(row), "SHUFFLE");
    EXPECT_TRUE(row.cells[3].chain_end);
}

TEST(ShuffledRecords, RefuseWhatIsNoPermutation) {
    RowText row = RowFromText(0, "AB", 0, 10);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 2>{0, 0}), std::invalid_argument);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 2>{0, 2}), std::invalid_argument);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 1>{0}), std::invalid_argument);
}

}  // namespace
}  // namespace zel::samples
