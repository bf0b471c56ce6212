#include "samples/message_writer.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "samples/bytes_matcher.h"

namespace zel::samples {
namespace {

using samples_test::Hex;
using samples_test::Slice;

// tests/module/formats checks the position and the width of every field, tests/module/message the order of its bits.
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
    EXPECT_EQ(Slice(bytes, 0, 8), Hex("000002BE 00000000"));
    EXPECT_EQ(Slice(bytes, at.flags, 2), Hex("8123"));
    EXPECT_EQ(at.flash_font, 152u);
    EXPECT_EQ(Slice(bytes, at.flash_font + 8 + 98, 4), Hex("0000001E"));
    EXPECT_EQ(Slice(bytes, at.flash_font + 8 + 120, 4), Hex("00000004"));
    EXPECT_EQ(at.header - at.flash_font, 2056u + 30 + 4);
    EXPECT_EQ(Slice(bytes, at.header + 4, 2), Hex("0001"));
    EXPECT_EQ(Slice(bytes, at.rows, 8 + 2 * 8), Hex("001E 0000 0800 0000  0064 0000 0041 0001  2078 0000 0042 003F"));
    EXPECT_EQ(Slice(bytes, at.palette, 8), Hex("ABCD 0002 12345678"));
    EXPECT_EQ(at.background - at.palette, 8u);
    EXPECT_EQ(Slice(bytes, at.background, 6), Hex("BBBD 0102 0102"));
    EXPECT_EQ(at.tabs - at.background, 2u + 2 * 974);
    EXPECT_EQ(Slice(bytes, at.tabs, 6), Hex("0002 001A 0009"));
    EXPECT_EQ(bytes.size(), at.tabs + 6 + 2 * 26 + 1);
}

TEST(ShuffledRecords, RejectAnythingButAPermutation) {
    RowText row = RowFromText(0, "AB", 0, 10);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 2>{0, 0}), std::invalid_argument);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 2>{0, 2}), std::invalid_argument);
    EXPECT_THROW(ShuffleRecords(row, std::array<unsigned, 1>{0}), std::invalid_argument);
}

}  // namespace
}  // namespace zel::samples
