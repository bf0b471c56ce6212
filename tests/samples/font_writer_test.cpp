#include "samples/font_writer.h"

#include <gtest/gtest.h>

#include "samples/bytes_matcher.h"

namespace zel::samples {
namespace {

using samples_test::Hex;
using samples_test::Slice;

// tests/module/formats checks the position and the width of every field, tests/module/font the blocks of other flags.
TEST(FontBytes, HaveAllSectionsInTheFormatsOrder) {
    FontFile font;
    font.header.font_flags = 0x24;
    font.AddRunCoded(65, {ColourRun(1, 255, 4), EndOfGlyph()}, 10, 20);
    font.AddRunCoded(66, {EndOfGlyph()}, 11, 21);
    font.aux_block = {1, 2, 3};
    font.word_table = {0x0405, 0x0607};
    font.char_table_a = Bytes(400, 8);
    font.char_table_b = {9};
    font.sample = SampleBlock{7, {2, 1, {0xA1, 0xA2}}, {1, 1, {0xB1}}};
    font.AddStored(70, {.width = 1, .height = 1, .pixels = Bytes(4)}, 12, 22);
    font.AddStored(67, {.width = 0, .height = 0}, 13, 23);
    font.tail = {0xEE};
    FontOffsets at;
    const Bytes bytes = WriteFont(font, &at);
    EXPECT_EQ(Slice(bytes, 0, 4), Hex("000001F4"));
    EXPECT_EQ(Slice(bytes, 136 + 98, 6), Hex("0000000C 0003"));
    EXPECT_EQ(Slice(bytes, 264 + 65 * 10, 20), Hex("0200 00002814 00000000 0200 00002C15 00000008"));
    EXPECT_EQ(Slice(bytes, 2184, 12), Hex("0001FFE1 00000000 00000000"));
    EXPECT_EQ(Slice(bytes, 2196, 7), Hex("010203 0405 0607"));
    EXPECT_EQ(Slice(bytes, 2203 + 383, 3), Hex("08 09 00"));
    EXPECT_EQ(Slice(bytes, 2203 + 2 * 384, 13), Hex("0007 0002 0001 0001 0001 A1A2 B1"));
    EXPECT_EQ(at.stored.at(67), 2203u + 2 * 384 + 13);
    EXPECT_EQ(at.stored.at(70), at.stored.at(67) + 12);
    EXPECT_EQ(bytes.size(), at.stored.at(70) + 16 + 1);
}

TEST(RgbaFile, IsAHeaderAndARecord) {
    const Bytes bytes = WriteRgbaFile(717, {.width = 1, .height = 1, .pixels = {1, 2, 3, 4}});
    ASSERT_EQ(bytes.size(), 136u + 16);
    EXPECT_EQ(Slice(bytes, 0, 4), Hex("000002CD"));
    EXPECT_EQ(Slice(bytes, 136, 16), Hex("00000010 0000 0000 0002 0001 01020304"));
}

}  // namespace
}  // namespace zel::samples
