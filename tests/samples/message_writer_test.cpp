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

// tests/module/formats checks the position of every field against docs/formats.
TEST(RecordBytes, HoldValuesMostSignificantBitFirst) {
    EXPECT_EQ(AsBytes(WriteCharCell({.place_flag = true,
                                     .char_x = 0x155,
                                     .colour_set = 5,
                                     .char_y = 0x2AB,
                                     .char_font = 0x2B,
                                     .char_code = 0x1A5,
                                     .b6_word = 3,
                                     .next_char = 1})),
              Hex("41 55 16 AB AD A5 00 C1"));
    EXPECT_EQ(AsBytes(WriteRowHead({.row_empty = true,
                                    .row_y = 0x155,
                                    .first_char = 0x2B,
                                    .row_top = 0x201,
                                    .char_count = 0x15,
                                    .row_bottom = 0x102,
                                    .b6 = 0xA5,
                                    .b7 = 0x5A})),
              Hex("21 55 AE 01 55 02 A5 5A"));
    EXPECT_EQ(
        Slice(WriteTabField({.tab_row = 33, .tab_a = 9, .tab_font = 17, .tab_colour = 10, .tab_flags = 21}), 22, 3),
        Hex("86 63 55"));
}

TEST(RecordBytes, HaveDefaults) {
    EXPECT_EQ(AsBytes(WriteCharCell({})), Hex("00 00 00 00 00 00 00 3F")) << "the chain ends";
    EXPECT_EQ(AsBytes(WriteRowHead({.cells = {{}, {}}})), Hex("00 00 00 00 08 00 00 00")) << "two records";
}

TEST(RecordBytes, TruncateAValueWithoutAnEffectOnItsNeighbours) {
    EXPECT_EQ(AsBytes(WriteCharCell({.char_x = 0x8401, .colour_set = 8, .next_char = 64})),
              Hex("00 01 00 00 00 00 00 00"));
}

TEST(TabFieldBytes, HoldSeventeenCharactersOfTheName) {
    const Bytes bytes = WriteTabField({.tab_name = "abcdefghijklmnopqrst"});
    ASSERT_EQ(bytes.size(), 26u);
    EXPECT_EQ(Slice(bytes, 5, 17), AsBytes(std::string("abcdefghijklmnopq")));
}

TEST(MessageBytes, AreThoseOfTheSmallestMessage) {
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

TEST(MessageBytes, TruncateATypeName) {
    MessageFile message;
    message.psos.type_name = std::string(200, 'x');
    EXPECT_EQ(Slice(WriteMessage(message), 134, 4), Hex("7878 0000"));
}

TEST(MessageBytes, HaveAllSectionsInTheFormatsOrder) {
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

TEST(MessageBytes, HaveTheGivenCountsAndSizes) {
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

/// The text of a row in reading order.
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

TEST(ShuffledRecords, RejectAnythingButAPermutation) {
    RowText row = RowFromText(0, "AB", 0, 10);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 2>{0, 0}), std::invalid_argument);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 2>{0, 2}), std::invalid_argument);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 1>{0}), std::invalid_argument);
}

}  // namespace
}  // namespace zel::samples
