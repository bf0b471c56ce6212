#include "files/font_writer.h"

#include <algorithm>

#include "files/font_fields.h"

namespace zel::files {
namespace {

void WriteSampleBlock(const SampleBlock& block, ByteWriter& out) {
    out.Append(WriteRecord<SampleHeadFields>(block)).Append(block.a.rows).Append(block.b.rows);
}

void WriteCharTable(const Bytes& table, ByteWriter& out) {
    const std::size_t size = std::min(table.size(), kCharTableSize);
    out.Append(std::span(table).first(size)).Fill(kCharTableSize - size);
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
    const auto encoding_size = header.encoding_size.value_or(static_cast<std::uint32_t>(font.encoding.size()));
    const int aux_block_size = header.aux_block_size.value_or(static_cast<int>(font.aux_block.size()));
    const auto record = WriteRecord<FontHeaderFields>(header, encoding_size, aux_block_size,
                                                      header.word_table_size.value_or(ComputedWordTableSize(font)),
                                                      header.sample_present.value_or(ComputedSamplePresent(font)));
    return {record.begin(), record.end()};
}

std::array<std::uint8_t, 10> WriteCharEntry(const CharEntry& entry) {
    return WriteRecord<CharEntryFields>(entry);
}

Bytes WriteStoredGlyph(const StoredGlyph& glyph) {
    ByteWriter out;
    out.Append(WriteRecord<StoredHeadFields>(
        glyph, glyph.length.value_or(static_cast<std::uint32_t>(StoredHeadFields::kSize + glyph.pixels.size())),
        glyph.width_word.value_or(glyph.width + 1), glyph.height_word.value_or(glyph.height)));
    return out.Append(glyph.pixels).Written();
}

std::uint32_t ComputedWordTableSize(const FontFile& font) {
    return static_cast<std::uint32_t>(2 * font.word_table.size()) + (font.word_table_odd_byte ? 1 : 0);
}

unsigned ComputedSamplePresent(const FontFile& font) {
    return font.sample || font.first_sample ? 1 : 0;
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
    if (font.word_table_odd_byte) out.U8(*font.word_table_odd_byte);
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
    if (font.size) out.Cut(*font.size);
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
