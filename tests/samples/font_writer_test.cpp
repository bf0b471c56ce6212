#include "samples/font_writer.h"

#include <gtest/gtest.h>

#include "samples/bytes_matcher.h"

namespace zel::samples {
namespace {

using samples_test::AsBytes;
using samples_test::Hex;
using samples_test::Slice;

// tests/module/formats checks the position of every field against docs/formats.
TEST(CharEntryBytes, HoldValuesMostSignificantBitFirstAndTruncateThem) {
    EXPECT_EQ(AsBytes(WriteCharEntry({.glyph_kind = 170,
                                      .byte_1 = 9,
                                      .glyph_bits_a = 2,
                                      .glyph_bits_b = 1,
                                      .glyph_top = 4,
                                      .glyph_metric = 1024 + 33,
                                      .glyph_offset = 0x01020304})),
              Hex("AA 09 08101021 01020304"));
}

TEST(FontHeaderBytes, HoldNegativeNumbersAndTheGivenSizes) {
    FontFile font;
    font.header = {
        .row_top_offset = -2, .encoding_size = 0x01000002, .aux_block_size = -1, .word_table_size = 0xFFFF8000};
    const Bytes bytes = WriteFontHeader(font);
    ASSERT_EQ(bytes.size(), 128u);
    EXPECT_EQ(Slice(bytes, 80, 2), Hex("FFFE"));
    EXPECT_EQ(Slice(bytes, 98, 6), Hex("01000002 FFFF"));
    EXPECT_EQ(Slice(bytes, 120, 4), Hex("FFFF8000"));
}

TEST(StoredGlyphBytes, ComputeTheirSizes) {
    EXPECT_EQ(WriteStoredGlyph({.width = 2, .height = 1, .pixels = {255, 1, 2, 3, 0, 0, 0, 0}, .flags_word = 0x8000}),
              Hex("00000014 8000 0000 0003 0001 FF010203 00000000"));
}

TEST(StoredGlyphBytes, HaveTheGivenSizes) {
    EXPECT_EQ(WriteStoredGlyph({.length = 5, .word_6 = 0x1234, .width_word = 0, .height_word = 0xFFFF}),
              Hex("00000005 0000 1234 0000 FFFF"));
}

/// A font with something in every section.
FontFile FullFont(unsigned font_flags) {
    FontFile font;
    font.header.font_flags = font_flags;
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
    return font;
}

TEST(FontBytes, HaveAllSectionsInTheFormatsOrder) {
    FontOffsets at;
    const Bytes bytes = WriteFont(FullFont(0x24), &at);
    EXPECT_EQ(Slice(bytes, 0, 4), Hex("000001F4"));
    EXPECT_EQ(at.header, 136u);
    EXPECT_EQ(at.directory, 264u);
    EXPECT_EQ(Slice(bytes, at.directory + 65 * 10, 20), Hex("0200 00002814 00000000 0200 00002C15 00000008"));
    EXPECT_EQ(at.encoding, 2184u);
    EXPECT_EQ(Slice(bytes, 136 + 98, 6), Hex("0000000C 0003"));
    EXPECT_EQ(Slice(bytes, at.encoding, 12), Hex("0001FFE1 00000000 00000000"));
    EXPECT_EQ(at.aux_block, at.encoding + 12);
    EXPECT_EQ(Slice(bytes, at.aux_block, 7), Hex("010203 0405 0607"));
    EXPECT_EQ(at.char_tables, at.word_table + 4);
    EXPECT_EQ(Slice(bytes, at.char_tables + 383, 3), Hex("08 09 00"));
    EXPECT_EQ(at.sample, at.char_tables + 2 * 384);
    EXPECT_EQ(Slice(bytes, at.sample, 13), Hex("0007 0002 0001 0001 0001 A1A2 B1"));
    EXPECT_EQ(at.stored.at(67), at.sample + 13);
    EXPECT_EQ(at.stored.at(70), at.stored.at(67) + 12);
    EXPECT_EQ(at.tail, at.stored.at(70) + 16);
    EXPECT_EQ(bytes.size(), at.tail + 1);
}

TEST(FontBytes, HaveTheFirstSampleAfterTheEncodingData) {
    FontFile font = FullFont(kSampleFirstFont);
    font.first_sample = SampleBlock{3, {}, {}};
    FontOffsets at;
    const Bytes bytes = WriteFont(font, &at);
    EXPECT_EQ(at.first_sample, at.encoding + 12);
    EXPECT_EQ(Slice(bytes, at.first_sample, 13), Hex("0003 0000 0000 0000 0000 010203"));
    EXPECT_EQ(at.sample, at.char_tables) << "18 has bit 0x04 clear";
    EXPECT_EQ(Slice(bytes, 136 + 124, 2), Hex("0001"));
}

TEST(FontBytes, HaveNoEncodingDataWithoutItsFlag) {
    FontOffsets at;
    const Bytes bytes = WriteFont(FullFont(0x04), &at);
    EXPECT_EQ(at.aux_block, 2184u);
    EXPECT_EQ(Slice(bytes, 136 + 98, 4), Hex("0000000C")) << "the header's size is unchanged";
}

TEST(RgbaFile, IsAHeaderAndARecord) {
    const Bytes bytes = WriteRgbaFile(717, {.width = 1, .height = 1, .pixels = {1, 2, 3, 4}});
    ASSERT_EQ(bytes.size(), 136u + 16);
    EXPECT_EQ(Slice(bytes, 0, 4), Hex("000002CD"));
    EXPECT_EQ(Slice(bytes, 136, 16), Hex("00000010 0000 0000 0002 0001 01020304"));
}

}  // namespace
}  // namespace zel::samples
