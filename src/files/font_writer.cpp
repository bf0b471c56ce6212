#include "files/font_writer.h"

#include <algorithm>

namespace zel::files {
namespace {

constexpr std::size_t kCharTableSize = 384;

std::uint32_t Signed(int value) {
    return static_cast<std::uint32_t>(value);
}

void WriteSampleBlock(const SampleBlock& block, ByteWriter& out) {
    out.U16(block.first_word);
    for (const Sample* sample : {&block.a, &block.b}) out.U16(Signed(sample->width)).U16(Signed(sample->height));
    out.Append(block.a.rows).Append(block.b.rows);
}

void WriteCharTable(const Bytes& table, ByteWriter& out) {
    const std::size_t size = std::min(table.size(), kCharTableSize);
    out.Append(std::span(table).first(size)).Fill(kCharTableSize - size);
}

bool HasEncodingPlace(unsigned font_flags) {
    return font_flags == kSampleFirstFont || (font_flags & kPlainFont) != 0;
}

}  // namespace

void FontFile::AddRunCoded(unsigned char_code, const RunCodes& codes, unsigned glyph_top, unsigned glyph_metric) {
    CharEntry& entry = directory.at(char_code);
    entry.glyph_kind = CharEntry::kRunCoded;
    entry.glyph_top = glyph_top;
    entry.glyph_metric = glyph_metric;
    entry.glyph_offset = static_cast<std::uint32_t>(encoding.size());
    const Bytes bytes = RunCodeBytes(codes);
    encoding.insert(encoding.end(), bytes.begin(), bytes.end());
}

void FontFile::AddStored(unsigned char_code, StoredGlyph glyph, unsigned glyph_top, unsigned glyph_metric) {
    CharEntry& entry = directory.at(char_code);
    entry.glyph_kind = CharEntry::kStored;
    entry.glyph_top = glyph_top;
    entry.glyph_metric = glyph_metric;
    stored.insert_or_assign(char_code, std::move(glyph));
}

Bytes WriteFontHeader(const FontFile& font) {
    const FontHeader& header = font.header;
    ByteWriter out;
    out.Text(header.font_name, 70).Text(header.font_id_text, 4).U32(header.dword_74);
    out.U16(Signed(header.font_height)).U16(Signed(header.row_top_offset)).U16(header.word_82);
    BitRecord<4> bits;
    bits.Put(4, header.edge_type).Put(4, header.edge_direction).Put(8, header.edge_size);
    bits.Put(7, header.bits_86).Put(9, header.bits_87);
    out.Append(bits.Written()).Append(header.bytes_88).U32(header.dword_94);
    out.U32(header.encoding_size.value_or(static_cast<std::uint32_t>(font.encoding.size())));
    out.U16(Signed(header.aux_block_size.value_or(static_cast<int>(font.aux_block.size())))).U16(header.font_flags);
    for (const auto word : header.words_106) out.U16(word);
    out.U16(Signed(header.row_inset));
    out.U32(header.word_table_size.value_or(static_cast<std::uint32_t>(2 * font.word_table.size())));
    out.U16(header.sample_present.value_or(font.sample || font.first_sample ? 1 : 0)).U16(header.word_126);
    return out.Written();
}

std::array<std::uint8_t, 10> WriteCharEntry(const CharEntry& entry) {
    BitRecord<10> bits;
    bits.Put(8, entry.glyph_kind).Put(8, entry.byte_1);
    bits.Put(6, entry.glyph_bits_a).Put(6, entry.glyph_bits_b).Put(10, entry.glyph_top).Put(10, entry.glyph_metric);
    bits.Put(32, entry.glyph_offset);
    return bits.Written();
}

Bytes WriteStoredGlyph(const StoredGlyph& glyph) {
    ByteWriter out;
    out.U32(glyph.length.value_or(static_cast<std::uint32_t>(12 + glyph.pixels.size())));
    out.U16(glyph.flags_word).U16(glyph.word_6);
    out.U16(glyph.width_word.value_or(glyph.width + 1)).U16(glyph.height_word.value_or(glyph.height));
    out.Append(glyph.pixels);
    return out.Written();
}

Bytes WriteFont(const FontFile& font, FontOffsets* offsets) {
    FontOffsets at;
    ByteWriter out;
    WritePsosHeader(font.psos, out);
    at.header = out.Size();
    out.Append(WriteFontHeader(font));
    at.directory = out.Size();
    for (const auto& entry : font.directory) out.Append(WriteCharEntry(entry));
    at.encoding = out.Size();
    if (HasEncodingPlace(font.header.font_flags)) out.Append(font.encoding);
    at.first_sample = out.Size();
    if (font.first_sample) WriteSampleBlock(*font.first_sample, out);
    at.aux_block = out.Size();
    out.Append(font.aux_block);
    at.word_table = out.Size();
    for (const auto word : font.word_table) out.U16(word);
    at.char_tables = out.Size();
    if ((font.header.font_flags & kHasCharTables) != 0) {
        WriteCharTable(font.char_table_a, out);
        WriteCharTable(font.char_table_b, out);
    }
    at.sample = out.Size();
    if (font.sample) WriteSampleBlock(*font.sample, out);
    for (const auto& [char_code, glyph] : font.stored) {
        at.stored[char_code] = out.Size();
        out.Append(WriteStoredGlyph(glyph));
    }
    at.tail = out.Size();
    out.Append(font.tail);
    if (offsets != nullptr) *offsets = at;
    return out.Written();
}

Bytes WriteRgbaFile(std::uint32_t file_type, const StoredGlyph& picture) {
    ByteWriter out;
    WritePsosHeader({file_type, 0, "RGBA"}, out);
    out.Append(WriteStoredGlyph(picture));
    return out.Written();
}

}  // namespace zel::files
