#pragma once

#include <cstddef>

#include "files/record_fields.h"

/// The fields of a message's records, for WriteRecord and ReadRecord. A count or size that a description may leave out
/// is an argument of its own.
namespace zel::files {

struct CharCellFields {
    static constexpr std::size_t kSize = 8;
    template <class Io, class Cell>
    static void Each(Io& io, Cell& cell) {
        io.Bits(1, cell.b0_bit7);
        io.Bits(1, cell.place_flag);
        io.Bits(1, cell.chain_end);
        io.Bits(3, cell.b0_bits4to2);
        io.Bits(10, cell.char_x);
        io.Bits(2, cell.b2_bits7to6);
        io.Bits(1, cell.b2_bit5);
        io.Bits(3, cell.colour_set);
        io.Bits(10, cell.char_y);
        io.Bits(6, cell.char_font);
        io.Bits(10, cell.char_code);
        io.Bits(10, cell.b6_word);
        io.Bits(6, cell.next_char);
    }
};

struct RowHeadFields {
    static constexpr std::size_t kSize = 8;
    template <class Io, class Row, class Count>
    static void Each(Io& io, Row& row, Count& char_count) {
        io.Bits(1, row.b0_bit7);
        io.Bits(1, row.b0_bit6);
        io.Bits(1, row.row_empty);
        io.Bits(3, row.b0_bits4to2);
        io.Bits(10, row.row_y);
        io.Bits(6, row.first_char);
        io.Bits(10, row.row_top);
        io.Bits(6, char_count);
        io.Bits(10, row.row_bottom);
        io.Bits(8, row.b6);
        io.Bits(8, row.b7);
    }
};

struct MessageFlagsFields {
    static constexpr std::size_t kSize = 16;
    template <class Io, class Flags, class MoreFlags>
    static void Each(Io& io, Flags& section_flags, MoreFlags& more_flags) {
        io.Bits(16, section_flags);
        io.Array(more_flags);
    }
};

struct MessageHeaderFields {
    static constexpr std::size_t kSize = 52;
    template <class Io, class Header, class LastRow>
    static void Each(Io& io, Header& header, LastRow& last_row) {
        io.Bits(16, header.word_0);
        io.Bits(16, header.word_2);
        io.Bits(16, last_row);
        io.Bits(16, header.frame_left);
        io.Bits(16, header.frame_top);
        io.Bits(16, header.frame_right);
        io.Bits(16, header.frame_bottom);
        io.Bits(16, header.word_14);
        io.Bits(16, header.word_16);
        io.Bits(16, header.word_18);
        io.Array(header.font_numbers);
    }
};

struct PaletteHeadFields {
    static constexpr std::size_t kSize = 4;
    template <class Io, class Palette, class Words>
    static void Each(Io& io, Palette& palette, Words& palette_words) {
        io.Bits(16, palette.palette_lead);
        io.Bits(16, palette_words);
    }
};

struct TabHeadFields {
    static constexpr std::size_t kSize = 6;
    template <class Io, class Tabs, class Words>
    static void Each(Io& io, Tabs& tabs, Words& tab_words) {
        io.Bits(16, tabs.tab_version);
        io.Bits(16, tab_words);
        io.Bits(16, tabs.third_word);
    }
};

struct TabFieldFields {
    static constexpr std::size_t kSize = 26;
    template <class Io, class Field>
    static void Each(Io& io, Field& field) {
        io.Bits(16, field.tab_start);
        io.Bits(16, field.tab_end);
        io.Bits(8, field.tab_byte);
        io.Text(field.tab_name, 17);
        io.Bits(6, field.tab_row);
        io.Bits(4, field.tab_a);
        io.Bits(5, field.tab_font);
        io.Bits(4, field.tab_colour);
        io.Bits(5, field.tab_flags);
        io.Bits(8, field.b25);
    }
};

/// Bits of section_flags.
constexpr unsigned kPaletteFlag = 0x0001, kBackgroundFlag = 0x0002, kTabFlag = 0x0020, kFlashFlag = 0x0100;
constexpr unsigned kPalFlag = 0x8000;

/// Entries of a whole palette, the most words that a reader takes, and the most records of a tab table.
constexpr unsigned kPaletteEntries = 8 * 32, kMostPaletteWords = 2 * kPaletteEntries, kMostTabFields = 200;

/// Words of a background's body; 0 for an unknown tag.
constexpr std::size_t BackgroundWords(unsigned tag) noexcept {
    switch (tag) {
        case 0xBBBB:
            return 1536;
        case 0xBBBC:
            return 1154;
        case 0xBBBD:
            return 974;
        default:
            return 0;
    }
}

}  // namespace zel::files
