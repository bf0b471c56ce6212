#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

#include "files/font_writer.h"
#include "files/message_fields.h"
#include "files/message_writer.h"

/// Random descriptions, each of a file that is read back as the same description.
namespace zel::files_test {

using namespace zel::files;

/// Random numbers that are the same in every run.
class Dice {
  public:
    explicit Dice(unsigned seed) : m_engine(seed) {}
    /// 0 to `limit` - 1.
    unsigned Below(unsigned limit) { return static_cast<unsigned>(m_engine() % limit); }
    unsigned Bits(unsigned width) { return static_cast<unsigned>(m_engine()) & ((1U << width) - 1); }
    bool Chance(unsigned one_in) { return Below(one_in) == 0; }

  private:
    std::mt19937 m_engine;
};

inline CharCell RandomCell(Dice& dice) {
    return {.b0_bit7 = dice.Chance(2),
            .place_flag = dice.Chance(2),
            .chain_end = dice.Chance(2),
            .b0_bits4to2 = dice.Bits(3),
            .char_x = dice.Bits(10),
            .b2_bits7to6 = dice.Bits(2),
            .b2_bit5 = dice.Chance(2),
            .colour_set = dice.Bits(3),
            .char_y = dice.Bits(10),
            .char_font = dice.Bits(6),
            .char_code = dice.Bits(10),
            .b6_word = dice.Bits(10),
            .next_char = dice.Bits(6)};
}

inline RowText RandomRow(Dice& dice) {
    RowText row{.b0_bit7 = dice.Chance(2),
                .b0_bit6 = dice.Chance(2),
                .row_empty = dice.Chance(3),
                .b0_bits4to2 = dice.Bits(3),
                .row_y = dice.Bits(10),
                .first_char = dice.Bits(6),
                .row_top = dice.Bits(10),
                .row_bottom = dice.Bits(10),
                .b6 = dice.Bits(8),
                .b7 = dice.Bits(8)};
    if (row.row_empty) {
        if (dice.Chance(2)) row.char_count = 1 + dice.Below(63);
        return row;
    }
    for (unsigned n = dice.Below(64); n > 0; --n) row.cells.push_back(RandomCell(dice));
    return row;
}

inline std::string RandomText(Dice& dice, unsigned longest) {
    std::string text;
    for (unsigned n = dice.Below(longest + 1); n > 0; --n) text.push_back(static_cast<char>(dice.Bits(8)));
    return text.erase(text.find_last_not_of('\0') + 1);
}

inline TabField RandomField(Dice& dice) {
    return {.tab_start = dice.Bits(16),
            .tab_end = dice.Bits(16),
            .tab_byte = dice.Bits(8),
            .tab_name = RandomText(dice, 17),
            .tab_row = dice.Bits(6),
            .tab_a = dice.Bits(4),
            .tab_font = dice.Bits(5),
            .tab_colour = dice.Bits(4),
            .tab_flags = dice.Bits(5),
            .b25 = dice.Bits(8)};
}

inline FlashFont RandomFlashFont(Dice& dice) {
    FlashFont flash{.encoding_size = dice.Below(300), .word_table_size = dice.Below(300)};
    if (dice.Chance(2)) {
        flash.fill = static_cast<std::uint8_t>(dice.Bits(8));
        return flash;
    }
    flash.content.resize(FlashFont::kFixedContent + flash.encoding_size + flash.word_table_size);
    for (auto& byte : flash.content) byte = static_cast<std::uint8_t>(dice.Bits(8));
    return flash;
}

inline BackgroundBlock RandomBackground(Dice& dice) {
    BackgroundBlock background{.tag = 0xBBBB + dice.Below(3)};
    if (dice.Chance(2)) {
        background.value = dice.Bits(16);
    } else {
        const std::size_t words = background.tag == 0xBBBB ? 1536 : background.tag == 0xBBBC ? 1154 : 974;
        for (std::size_t k = 0; k < words; ++k) background.content.push_back(static_cast<std::uint16_t>(dice.Bits(16)));
    }
    return background;
}

inline PaletteBlock RandomPalette(Dice& dice) {
    PaletteBlock palette{.palette_lead = dice.Bits(16)};
    for (unsigned n = 1 + dice.Below(256); n > 0; --n) palette.entries.push_back(dice.Bits(16) << 16 | dice.Bits(16));
    if (palette.entries.size() == 256 && dice.Chance(2)) palette.palette_words = 513 + dice.Below(1000);
    if (palette.entries.size() < 256 && dice.Chance(2)) palette.half_entry = static_cast<std::uint16_t>(dice.Bits(16));
    return palette;
}

inline MessageFile RandomMessage(Dice& dice) {
    MessageFile message;
    message.psos.word_4 = dice.Bits(16);
    message.psos.type_name = RandomText(dice, 128);
    message.pal = dice.Chance(2);
    for (auto& word : message.more_flags) word = static_cast<std::uint16_t>(dice.Bits(16));
    MessageHeader& header = message.header;
    for (unsigned* word : {&header.word_0, &header.word_2, &header.frame_left, &header.frame_top, &header.frame_right,
                           &header.frame_bottom, &header.word_14, &header.word_16, &header.word_18}) {
        *word = dice.Bits(16);
    }
    for (auto& number : header.font_numbers) number = static_cast<std::uint16_t>(dice.Bits(16));
    for (unsigned n = 1 + dice.Below(20); n > 0; --n) message.rows.push_back(RandomRow(dice));
    if (dice.Chance(2)) message.flash_font = RandomFlashFont(dice);
    if (dice.Chance(2)) message.palette = RandomPalette(dice);
    if (dice.Chance(2)) message.background = RandomBackground(dice);
    if (dice.Chance(2)) {
        TabTable& tabs = message.tabs.emplace();
        tabs.third_word = dice.Bits(16);
        for (unsigned n = dice.Below(201); n > 0; --n) tabs.fields.push_back(RandomField(dice));
        if (dice.Chance(2)) tabs.tab_words = static_cast<unsigned>(13 * tabs.fields.size()) + 1 + dice.Below(12);
    }
    for (unsigned n = dice.Below(40); n > 0; --n) message.tail.push_back(static_cast<std::uint8_t>(dice.Bits(8)));
    if (dice.Chance(3)) message.section_flags = ComputedSectionFlags(message) | 0x1000;
    return message;
}

inline Bytes RandomBytes(Dice& dice, std::size_t size) {
    Bytes bytes(size);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(dice.Bits(8));
    return bytes;
}

inline SampleBlock RandomSample(Dice& dice) {
    SampleBlock block{.first_word = dice.Bits(16)};
    for (Sample* sample : {&block.a, &block.b}) {
        const int height = static_cast<int>(dice.Below(5)), width = static_cast<int>(1 + dice.Below(9));
        const bool is_negative = dice.Chance(4);
        sample->width = is_negative ? -width : width;
        sample->height = is_negative ? -height : height;
        if (!is_negative) sample->rows = RandomBytes(dice, static_cast<std::size_t>(width * height));
    }
    return block;
}

inline FontFile RandomFont(Dice& dice) {
    FontFile font;
    font.psos.type_name = RandomText(dice, 128);
    FontHeader& header = font.header;
    header.font_name = RandomText(dice, 70);
    header.font_id_text = RandomText(dice, 4);
    for (int* word : {&header.font_height, &header.row_top_offset, &header.row_inset}) {
        *word = static_cast<std::int16_t>(dice.Bits(16));
    }
    header.dword_74 = dice.Bits(31);
    header.word_82 = dice.Bits(16);
    header.edge_type = dice.Bits(4);
    header.edge_direction = dice.Bits(4);
    header.edge_size = dice.Bits(8);
    header.bits_86 = dice.Bits(7);
    header.bits_87 = dice.Bits(9);
    for (auto& byte : header.bytes_88) byte = static_cast<std::uint8_t>(dice.Bits(8));
    header.dword_94 = dice.Bits(31);
    for (auto& word : header.words_106) word = static_cast<std::uint16_t>(dice.Bits(16));
    header.word_126 = dice.Bits(16);
    header.font_flags = dice.Chance(3) ? kSampleFirstFont : dice.Bits(16);
    for (CharEntry& entry : font.directory) {
        entry = {.glyph_kind = dice.Bits(8),
                 .byte_1 = dice.Bits(8),
                 .glyph_bits_a = dice.Bits(6),
                 .glyph_bits_b = dice.Bits(6),
                 .glyph_top = dice.Bits(10),
                 .glyph_metric = dice.Bits(10),
                 .glyph_offset = dice.Bits(31)};
        if (dice.Chance(4)) entry.glyph_kind = CharEntry::kStored;
    }
    if (HasEncodingPlace(header.font_flags)) font.encoding = RandomBytes(dice, dice.Below(300));
    font.aux_block = RandomBytes(dice, dice.Chance(2) ? 0 : dice.Below(300));
    for (unsigned n = dice.Below(50); n > 0; --n) font.word_table.push_back(static_cast<std::uint16_t>(dice.Bits(16)));
    if (dice.Chance(2)) font.word_table_odd_byte = static_cast<std::uint8_t>(dice.Bits(8));
    if ((header.font_flags & kHasCharTables) != 0) {
        font.char_table_a = RandomBytes(dice, 384);
        font.char_table_b = RandomBytes(dice, 384);
    }
    if (dice.Chance(2)) {
        font.sample = RandomSample(dice);
        if (header.font_flags == kSampleFirstFont && !font.encoding.empty()) font.first_sample = RandomSample(dice);
    }
    for (unsigned code = 0; code < kFontCharCount; ++code) {
        if (font.directory[code].glyph_kind != CharEntry::kStored) continue;
        font.stored[code] = {.width = dice.Bits(16) % 65535,
                             .height = dice.Bits(16),
                             .pixels = RandomBytes(dice, dice.Below(50)),
                             .flags_word = dice.Bits(16),
                             .word_6 = dice.Bits(16)};
        if (dice.Chance(9)) {
            font.stored[code].width = 0;
            font.stored[code].width_word = 0;
        }
    }
    font.tail = RandomBytes(dice, dice.Below(40));
    return font;
}

}  // namespace zel::files_test
