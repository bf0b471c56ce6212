#include "files/message_writer.h"

#include <stdexcept>

namespace zel::files {
namespace {

constexpr unsigned kPaletteBit = 0x0001, kBackgroundBit = 0x0002, kTabBit = 0x0020, kFlashBit = 0x0100;
constexpr unsigned kPalBit = 0x8000;
constexpr std::size_t kFlashHeaderSize = 128, kFlashDirectorySize = 192 * 10;

unsigned SectionFlags(const MessageFile& message) {
    unsigned flags = message.pal ? kPalBit : 0;
    if (message.palette) flags |= kPaletteBit;
    if (message.background) flags |= kBackgroundBit;
    if (message.tabs) flags |= kTabBit;
    if (message.flash_font) flags |= kFlashBit;
    return message.section_flags.value_or(flags);
}

void WriteFlashFont(const FlashFont& flash, ByteWriter& out) {
    out.Fill(8, flash.fill);
    out.Fill(98, flash.fill).U32(flash.encoding_size);           // header 0 to 101
    out.Fill(120 - 102, flash.fill).U32(flash.word_table_size);  // header 102 to 123
    out.Fill(kFlashHeaderSize - 124, flash.fill).Fill(kFlashDirectorySize, flash.fill);
    out.Fill(flash.data_size.value_or(std::size_t{flash.encoding_size} + flash.word_table_size), flash.fill);
}

void WriteHeader(const MessageHeader& header, std::size_t row_count, ByteWriter& out) {
    out.U16(header.word_0).U16(header.word_2);
    out.U16(header.last_row.value_or(static_cast<unsigned>(row_count) - 1));
    out.U16(header.frame_left).U16(header.frame_top).U16(header.frame_right).U16(header.frame_bottom);
    out.U16(header.word_14).U16(header.word_16).U16(header.word_18);
    for (const auto number : header.font_numbers) out.U16(number);
}

void WritePalette(const PaletteBlock& palette, ByteWriter& out) {
    out.U16(palette.palette_lead);
    out.U16(palette.palette_words.value_or(static_cast<unsigned>(2 * palette.entries.size())));
    for (const auto entry : palette.entries) out.U32(entry);
}

std::size_t BackgroundWords(unsigned tag) {
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

void WriteBackground(const BackgroundBlock& background, ByteWriter& out) {
    out.U16(background.tag);
    for (auto n = background.words.value_or(BackgroundWords(background.tag)); n > 0; --n) out.U16(background.value);
}

void WriteTabs(const TabTable& tabs, ByteWriter& out) {
    out.U16(tabs.tab_version);
    out.U16(tabs.tab_words.value_or(static_cast<unsigned>(13 * tabs.fields.size())));
    out.U16(tabs.third_word);
    for (const auto& field : tabs.fields) out.Append(WriteTabField(field));
}

}  // namespace

std::array<std::uint8_t, 8> WriteCharCell(const CharCell& cell) {
    BitRecord<8> bits;
    bits.Put(1, cell.b0_bit7).Put(1, cell.place_flag).Put(1, cell.chain_end).Put(3, cell.b0_bits4to2);
    bits.Put(10, cell.char_x);
    bits.Put(2, cell.b2_bits7to6).Put(1, cell.b2_bit5).Put(3, cell.colour_set).Put(10, cell.char_y);
    bits.Put(6, cell.char_font).Put(10, cell.char_code);
    bits.Put(10, cell.b6_word).Put(6, cell.next_char);
    return bits.Written();
}

std::array<std::uint8_t, 8> WriteRowHead(const RowText& row) {
    BitRecord<8> bits;
    bits.Put(1, row.b0_bit7).Put(1, row.b0_bit6).Put(1, row.row_empty).Put(3, row.b0_bits4to2).Put(10, row.row_y);
    bits.Put(6, row.first_char).Put(10, row.row_top);
    bits.Put(6, row.char_count.value_or(static_cast<unsigned>(row.cells.size()))).Put(10, row.row_bottom);
    bits.Put(8, row.b6).Put(8, row.b7);
    return bits.Written();
}

Bytes WriteTabField(const TabField& field) {
    ByteWriter out;
    out.U16(field.tab_start).U16(field.tab_end).U8(field.tab_byte).Text(field.tab_name, 17);
    BitRecord<3> bits;
    bits.Put(6, field.tab_row).Put(4, field.tab_a).Put(5, field.tab_font).Put(4, field.tab_colour);
    bits.Put(5, field.tab_flags);
    out.Append(bits.Written()).U8(field.b25);
    return out.Written();
}

Bytes WriteMessage(const MessageFile& message, MessageOffsets* offsets) {
    MessageOffsets at;
    ByteWriter out;
    WritePsosHeader(message.psos, out);
    at.flags = out.Size();
    out.U16(SectionFlags(message));
    for (const auto word : message.more_flags) out.U16(word);
    at.flash_font = out.Size();
    if (message.flash_font) WriteFlashFont(*message.flash_font, out);
    at.header = out.Size();
    WriteHeader(message.header, message.rows.size(), out);
    at.rows = out.Size();
    for (const auto& row : message.rows) {
        out.Append(WriteRowHead(row));
        for (const auto& cell : row.cells) out.Append(WriteCharCell(cell));
    }
    at.palette = out.Size();
    if (message.palette) WritePalette(*message.palette, out);
    at.background = out.Size();
    if (message.background) WriteBackground(*message.background, out);
    at.tabs = out.Size();
    if (message.tabs) WriteTabs(*message.tabs, out);
    at.tail = out.Size();
    out.Append(message.tail);
    if (offsets != nullptr) *offsets = at;
    return out.Written();
}

RowText RowFromText(unsigned row_y, std::string_view text, unsigned char_x, unsigned advance, const CharCell& like) {
    RowText row;
    row.row_y = row_y;
    for (const char c : text) {
        CharCell cell = like;
        cell.char_x = char_x;
        cell.char_code = static_cast<unsigned char>(c);
        row.cells.push_back(cell);
        char_x += advance;
    }
    ChainInOrder(row);
    return row;
}

RowText EmptyRow(unsigned row_y) {
    RowText row;
    row.row_y = row_y;
    row.row_empty = true;
    return row;
}

void ChainInOrder(RowText& row) {
    row.first_char = 0;
    unsigned next = 1;
    for (auto& cell : row.cells) {
        cell.next_char = next++;
        cell.chain_end = false;
    }
    if (row.cells.empty()) return;
    row.cells.back().next_char = 63;
    row.cells.back().chain_end = true;
}

void ShuffleRecords(RowText& row, std::span<const unsigned> places) {
    const std::size_t count = row.cells.size();
    std::vector<bool> taken(count, false);
    if (places.size() != count) throw std::invalid_argument("ShuffleRecords: one place for each record");
    for (const unsigned place : places) {
        if (place >= count || taken[place]) throw std::invalid_argument("ShuffleRecords: not a permutation");
        taken[place] = true;
    }
    std::vector<CharCell> moved(count);
    for (std::size_t k = 0; k < count; ++k) {
        moved[places[k]] = row.cells[k];
        moved[places[k]].next_char = k + 1 < count ? places[k + 1] : 63;
    }
    if (count > 0) row.first_char = places[0];
    row.cells = std::move(moved);
}

}  // namespace zel::files
