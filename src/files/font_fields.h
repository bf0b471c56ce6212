#pragma once

#include <cstddef>

#include "files/record_fields.h"

/// The fields of a font's records, for WriteRecord and ReadRecord. A size that a description may leave out is an
/// argument of its own.
namespace zel::files {

struct FontHeaderFields {
    static constexpr std::size_t kSize = 128;
    template <class Io, class Header, class EncodingSize, class AuxSize, class WordTableSize, class SamplePresent>
    static void Each(Io& io, Header& header, EncodingSize& encoding_size, AuxSize& aux_block_size,
                     WordTableSize& word_table_size, SamplePresent& sample_present) {
        io.Text(header.font_name, 70);
        io.Text(header.font_id_text, 4);
        io.Bits(32, header.dword_74);
        io.Signed(header.font_height);
        io.Signed(header.row_top_offset);
        io.Bits(16, header.word_82);
        io.Bits(4, header.edge_type);
        io.Bits(4, header.edge_direction);
        io.Bits(8, header.edge_size);
        io.Bits(7, header.bits_86);
        io.Bits(9, header.bits_87);
        io.Array(header.bytes_88);
        io.Bits(32, header.dword_94);
        io.Bits(32, encoding_size);
        io.Signed(aux_block_size);
        io.Bits(16, header.font_flags);
        io.Array(header.words_106);
        io.Signed(header.row_inset);
        io.Bits(32, word_table_size);
        io.Bits(16, sample_present);
        io.Bits(16, header.word_126);
    }
};

struct CharEntryFields {
    static constexpr std::size_t kSize = 10;
    template <class Io, class Entry>
    static void Each(Io& io, Entry& entry) {
        io.Bits(8, entry.glyph_kind);
        io.Bits(8, entry.byte_1);
        io.Bits(6, entry.glyph_bits_a);
        io.Bits(6, entry.glyph_bits_b);
        io.Bits(10, entry.glyph_top);
        io.Bits(10, entry.glyph_metric);
        io.Bits(32, entry.glyph_offset);
    }
};

struct SampleHeadFields {
    static constexpr std::size_t kSize = 10;
    template <class Io, class Block>
    static void Each(Io& io, Block& block) {
        io.Bits(16, block.first_word);
        io.Signed(block.a.width);
        io.Signed(block.a.height);
        io.Signed(block.b.width);
        io.Signed(block.b.height);
    }
};

struct StoredHeadFields {
    static constexpr std::size_t kSize = 12;
    template <class Io, class Glyph, class Length, class WidthWord, class HeightWord>
    static void Each(Io& io, Glyph& glyph, Length& length, WidthWord& width_word, HeightWord& height_word) {
        io.Bits(32, length);
        io.Bits(16, glyph.flags_word);
        io.Bits(16, glyph.word_6);
        io.Bits(16, width_word);
        io.Bits(16, height_word);
    }
};

/// Bytes of each of the two character tables.
constexpr std::size_t kCharTableSize = 384;

}  // namespace zel::files
