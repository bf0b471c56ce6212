#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "files/font_fields.h"
#include "files/font_writer.h"
#include "host/filejson/glyph_layout.h"
#include "host/filejson/message_keys.h"
#include "host/filejson/run_code_text.h"

/// The keys of a font's records; docs/json.md describes them.
namespace zel::filejson {

/// A directory entry as a document has it. Entries that are zero are left out.
struct DirectoryRecord {
    unsigned code = 0;
    files::CharEntry entry{};
    GlyphPlace place{};
};

/// A stored glyph as a document has it.
struct StoredRecord {
    unsigned code = 0;
    files::StoredGlyph glyph{};
};

inline constexpr unsigned kLastCharCode = files::kFontCharCount - 1;
inline constexpr std::size_t kMostParts = std::size_t{3} * files::kFontCharCount;

/// Whether a stored glyph has another number of pixels than its size needs.
inline bool IsFaulty(const files::StoredGlyph& glyph) {
    return glyph.length || glyph.pixels.size() != std::size_t{4} * glyph.width * glyph.height;
}

template <class Io, class Header>
void FontHeaderKeys(Io& io, Header& header) {
    io.Text("name", header.font_name, 70);
    io.Text("id", header.font_id_text, 4);
    io.Signed("height", header.font_height);
    io.Signed("row_top_offset", header.row_top_offset);
    io.Signed("row_inset", header.row_inset);
    io.Number("flags", header.font_flags, kWord);
    io.Object("edge", [&](auto& edge) {
        edge.Number("type", header.edge_type, 15);
        edge.Number("direction", header.edge_direction, 15);
        edge.Number("size", header.edge_size, kByte);
    });
    io.Optional("encoding_size", header.encoding_size, 0, kDoubleWord);
    io.Optional("aux_block_size", header.aux_block_size, -32768, 32767);
    io.Optional("word_table_size", header.word_table_size, 0, kDoubleWord);
    io.Optional("sample_present", header.sample_present, 0, kWord);
    io.Rare("dword_74", header.dword_74, kDoubleWord);
    io.Rare("word_82", header.word_82, kWord);
    io.Rare("bits_86", header.bits_86, 127);
    io.Rare("bits_87", header.bits_87, 511);
    io.Numbers("bytes_88", header.bytes_88);
    io.Rare("dword_94", header.dword_94, kDoubleWord);
    io.Numbers("words_106", header.words_106);
    io.Rare("word_126", header.word_126, kWord);
}

template <class Io, class Record>
void DirectoryKeys(Io& io, Record& record) {
    CodeKeys(io, record.code, kLastCharCode);
    io.Required("kind", record.entry.glyph_kind, kByte);
    io.Number("top", record.entry.glyph_top, kTenBits);
    io.Number("metric", record.entry.glyph_metric, kTenBits);
    io.Optional("same_glyph_as", record.place.same_as, 0, kLastCharCode);
    io.Optional("offset", record.place.offset, 0, kDoubleWord);
    io.Rare("bits_a", record.entry.glyph_bits_a, kSixBits);
    io.Rare("bits_b", record.entry.glyph_bits_b, kSixBits);
    io.Rare("byte_1", record.entry.byte_1, kByte);
}

void EncodingPartKeys(KeyWriter& io, const EncodingPart& part);
void EncodingPartKeys(KeyReader& io, EncodingPart& part);

template <class Io, class One>
void SampleKeys(Io& io, One& sample) {
    io.Signed("width", sample.width);
    io.Signed("height", sample.height);
    io.Bytes("rows", sample.rows);
}

template <class Io, class Block>
void SampleBlockKeys(Io& io, Block& block) {
    io.Rare("first_word", block.first_word, kWord);
    io.Object("a", [&](auto& inner) { SampleKeys(inner, block.a); });
    io.Object("b", [&](auto& inner) { SampleKeys(inner, block.b); });
}

template <class Io, class Record>
void StoredKeys(Io& io, Record& record) {
    CodeKeys(io, record.code, kLastCharCode);
    files::StoredGlyph glyph = record.glyph;
    bool faulty = IsFaulty(glyph);
    io.Flag("faulty", faulty);
    io.Required("width", glyph.width, kWord - 1);
    io.Required("height", glyph.height, kWord);
    io.Optional("width_word", glyph.width_word, 0, kWord);
    io.Optional("length", glyph.length, 12, kDoubleWord);
    io.Rare("flags_word", glyph.flags_word, kWord);
    io.Rare("word_6", glyph.word_6, kWord);
    io.Bytes("pixels", glyph.pixels);
    if constexpr (Io::kReads) {
        if (!faulty && IsFaulty(glyph)) {
            io.AddFault("pixels", "has " + std::to_string(glyph.pixels.size()) + " bytes; " +
                                      std::to_string(std::size_t{4} * glyph.width * glyph.height) +
                                      " make a glyph of this width and height");
        }
        record.glyph = std::move(glyph);
    }
}

/// A font as a document has it.
struct FontRecords {
    files::FontFile font{};
    std::vector<DirectoryRecord> directory{};
    std::vector<EncodingPart> encoding{};
    std::vector<StoredRecord> stored{};
};

template <class Io, class Records>
void FontKeys(Io& io, Records& records) {
    auto& font = records.font;
    PsosKeys(io, font.psos);
    io.Object("header", [&](auto& inner) { FontHeaderKeys(inner, font.header); });
    io.List("directory", records.directory, files::kFontCharCount,
            [](auto& inner, auto& record, std::size_t, std::size_t) { DirectoryKeys(inner, record); });
    io.List("encoding", records.encoding, kMostParts,
            [](auto& inner, auto& part, std::size_t, std::size_t) { EncodingPartKeys(inner, part); });
    io.Part("first_sample", font.first_sample, [](auto& inner, auto& block) { SampleBlockKeys(inner, block); });
    io.Bytes("aux_block", font.aux_block);
    files::Bytes words = BytesOfWords(font.word_table);
    if (font.word_table_odd_byte) words.push_back(*font.word_table_odd_byte);
    io.Bytes("word_table", words);
    if constexpr (Io::kReads) {
        font.word_table = WordsOfBytes(words);
        if (words.size() % 2 != 0) font.word_table_odd_byte = words.back();
    }
    io.Bytes("char_table_a", font.char_table_a);
    io.Bytes("char_table_b", font.char_table_b);
    io.Part("sample", font.sample, [](auto& inner, auto& block) { SampleBlockKeys(inner, block); });
    io.List("stored", records.stored, files::kFontCharCount,
            [](auto& inner, auto& record, std::size_t, std::size_t) { StoredKeys(inner, record); });
    io.Bytes("tail", font.tail, PassedOver::kYes);
    io.Optional("cut_at", font.size, 0, kLargestFile);
}

}  // namespace zel::filejson
