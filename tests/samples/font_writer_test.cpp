#include "samples/font_writer.h"

#include <gtest/gtest.h>

#include "samples/bytes_matcher.h"

namespace zel::samples {
namespace {

using samples_test::AsBytes;
using samples_test::Hex;
using samples_test::Slice;

TEST(FontHeaderBytes, FollowTheTable) {
    FontFile font;
    font.header = {.font_name = "Face Bold",
                   .font_id_text = "5012",
                   .dword_74 = 0x01020304,
                   .font_height = 40,
                   .row_top_offset = -2,
                   .word_82 = 0x0506,
                   .edge_type = 1,
                   .edge_direction = 3,
                   .edge_size = 4,
                   .bits_86 = 0x7F,
                   .bits_87 = 1,
                   .bytes_88 = {1, 2, 3, 4, 5, 6},
                   .dword_94 = 0x0708090A,
                   .encoding_size = 0x01000002,
                   .aux_block_size = -1,
                   .font_flags = 0x24,
                   .words_106 = {1, 2, 3, 4, 5, 6},
                   .row_inset = 7,
                   .word_table_size = 0xFFFF8000,
                   .sample_present = 2,
                   .word_126 = 0xABCD};
    const Bytes bytes = WriteFontHeader(font);
    ASSERT_EQ(bytes.size(), 128u);
    EXPECT_EQ(Slice(bytes, 0, 10), Hex("4661636520426F6C64 00"));
    EXPECT_EQ(Slice(bytes, 69, 9), Hex("00 35303132 01020304"));
    EXPECT_EQ(Slice(bytes, 78, 10), Hex("0028 FFFE 0506 13 04 FE01"));
    EXPECT_EQ(Slice(bytes, 88, 18), Hex("010203040506 0708090A 01000002 FFFF 0024"));
    EXPECT_EQ(Slice(bytes, 106, 22), Hex("000100020003000400050006 0007 FFFF8000 0002 ABCD"));
}

struct EntryCase {
    const char* name;
    CharEntry entry;
    const char* bytes;
};
void PrintTo(const EntryCase& row, std::ostream* out) {
    *out << row.name;
}

class CharEntryBits : public testing::TestWithParam<EntryCase> {};
TEST_P(CharEntryBits, StandWhereTheFormatPutsThem) {
    EXPECT_EQ(AsBytes(WriteCharEntry(GetParam().entry)), Hex(GetParam().bytes));
}
INSTANTIATE_TEST_SUITE_P(
    Each, CharEntryBits,
    testing::Values(EntryCase{"kind_and_byte_1", {.glyph_kind = 170, .byte_1 = 9}, "AA 09 00000000 00000000"},
                    EntryCase{"all_four_fields",
                              {.glyph_bits_a = 2, .glyph_bits_b = 1, .glyph_top = 4, .glyph_metric = 33},
                              "00 00 08101021 00000000"},
                    EntryCase{"glyph_top_at_its_most", {.glyph_top = 1023}, "00 00 000FFC00 00000000"},
                    EntryCase{"glyph_metric_cut_to_its_width", {.glyph_metric = 1024}, "00 00 00000000 00000000"},
                    EntryCase{"glyph_offset", {.glyph_offset = 0x01020304}, "00 00 00000000 01020304"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(StoredGlyphBytes, WorkOutTheirSizes) {
    EXPECT_EQ(WriteStoredGlyph({.width = 2, .height = 1, .pixels = {255, 1, 2, 3, 0, 0, 0, 0}, .flags_word = 0x8000}),
              Hex("00000014 8000 0000 0003 0001 FF010203 00000000"));
}

TEST(StoredGlyphBytes, ClaimWhatTheyAreToldToClaim) {
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

TEST(FontBytes, OfAllSectionsLieInTheOrderOfTheFormat) {
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

TEST(FontBytes, HaveTheFirstSampleBehindTheEncodingData) {
    FontFile font = FullFont(kSampleFirstFont);
    font.first_sample = SampleBlock{3, {}, {}};
    FontOffsets at;
    const Bytes bytes = WriteFont(font, &at);
    EXPECT_EQ(at.first_sample, at.encoding + 12);
    EXPECT_EQ(Slice(bytes, at.first_sample, 13), Hex("0003 0000 0000 0000 0000 010203"));
    EXPECT_EQ(at.sample, at.char_tables) << "18 has bit 0x04 clear";
    EXPECT_EQ(Slice(bytes, 136 + 124, 2), Hex("0001"));
}

TEST(FontBytes, HaveNoEncodingDataWithoutAPlaceForThem) {
    FontOffsets at;
    const Bytes bytes = WriteFont(FullFont(0x04), &at);
    EXPECT_EQ(at.aux_block, 2184u);
    EXPECT_EQ(Slice(bytes, 136 + 98, 4), Hex("0000000C")) << "the size stays";
}

TEST(RgbaFile, IsAHeaderAndARecord) {
    const Bytes bytes = WriteRgbaFile(717, {.width = 1, .height = 1, .pixels = {1, 2, 3, 4}});
    ASSERT_EQ(bytes.size(), 136u + 16);
    EXPECT_EQ(Slice(bytes, 0, 4), Hex("000002CD"));
    EXPECT_EQ(Slice(bytes, 136, 16), Hex("00000010 0000 0000 0002 0001 01020304"));
}

TEST(NumberedName, HasADotAndAtLeastFourDigits) {
    EXPECT_EQ(NumberedName(0), ".0000");
    EXPECT_EQ(NumberedName(12), ".0012");
    EXPECT_EQ(NumberedName(12345), ".12345");
}

}  // namespace
}  // namespace zel::samples
