#pragma once

#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <string>

#include "files/message_fields.h"
#include "files/message_writer.h"
#include "host/filejson/byte_values.h"
#include "host/filejson/key_reader.h"
#include "host/filejson/key_writer.h"

/// The keys of a message's records; docs/json.md describes them.
namespace zel::filejson {

inline constexpr unsigned kByte = 0xFF, kWord = 0xFFFF, kSixBits = 63, kTenBits = 1023;
inline constexpr std::uint32_t kDoubleWord = 0xFFFFFFFF;
inline constexpr unsigned kEndOfChain = 63, kNoCode = 0xFFFF;
inline constexpr std::size_t kMostCharacters = 63, kMostRows = 65536;

/// Whether a chain visits each of the row's records once.
bool IsWholeChain(const files::RowText& row);

/// Whether the file's own row contradicts itself: its chain, or its number of characters.
inline bool IsFaulty(const files::RowText& row) {
    return row.char_count.has_value() || !IsWholeChain(row);
}

/// `code`, and `text` for what can be printed; one of them is enough when they are read.
/// A code that could not be read is kNoCode.
void CodeKeys(KeyWriter& io, unsigned code);
void CodeKeys(KeyReader& io, unsigned& code, unsigned most);

inline void CodeKeys(KeyWriter& io, unsigned code, unsigned) {
    CodeKeys(io, code);
}

/// @param index, count  of the record in its row, whose order is the chain unless `next_char` says otherwise.
template <class Io, class Cell>
void CharacterKeys(Io& io, Cell& cell, std::size_t index, std::size_t count) {
    CodeKeys(io, cell.char_code, kTenBits);
    io.Required("x", cell.char_x, kTenBits);
    io.Number("y", cell.char_y, kTenBits);
    io.Number("font", cell.char_font, kSixBits);
    io.Number("colour_set", cell.colour_set, 7);
    io.Flag("place_flag", cell.place_flag);
    io.Rare("next_char", cell.next_char, kSixBits, index + 1 < count ? index + 1 : kEndOfChain);
    io.Flag("chain_end", cell.chain_end, cell.next_char == kEndOfChain);
    io.Flag("b0_bit7", cell.b0_bit7);
    io.Rare("b0_bits4to2", cell.b0_bits4to2, 7);
    io.Rare("b2_bits7to6", cell.b2_bits7to6, 3);
    io.Flag("b2_bit5", cell.b2_bit5);
    io.Rare("b6_word", cell.b6_word, kTenBits);
}

/// @param faulty  IsFaulty, or as the document says.
template <class Io, class Row, class Faulty>
void RowKeys(Io& io, Row& row, Faulty& faulty) {
    io.Flag("faulty", faulty);
    io.Flag("empty", row.row_empty);
    io.Required("y", row.row_y, kTenBits);
    io.Number("top", row.row_top, kTenBits);
    io.Number("bottom", row.row_bottom, kTenBits);
    io.Rare("first_char", row.first_char, kSixBits);
    io.Optional("char_count", row.char_count, 0, kSixBits);
    io.Flag("b0_bit7", row.b0_bit7);
    io.Flag("b0_bit6", row.b0_bit6);
    io.Rare("b0_bits4to2", row.b0_bits4to2, 7);
    io.Rare("b6", row.b6, kByte);
    io.Rare("b7", row.b7, kByte);
    io.List("characters", row.cells, kMostCharacters,
            [](auto& inner, auto& cell, std::size_t index, std::size_t count) {
                CharacterKeys(inner, cell, index, count);
            });
}

/// Reads a row and checks what its parts say of each other.
void ReadRow(KeyReader& io, files::RowText& row);

/// 16 numbers, null for a slot without a font.
void FontNumberKeys(KeyWriter& io, const std::array<std::uint16_t, 16>& numbers);
void FontNumberKeys(KeyReader& io, std::array<std::uint16_t, 16>& numbers);

template <class Io, class Header>
void HeaderKeys(Io& io, Header& header) {
    io.Object("frame", [&](auto& frame) {
        frame.Number("left", header.frame_left, kWord);
        frame.Number("top", header.frame_top, kWord);
        frame.Number("right", header.frame_right, kWord);
        frame.Number("bottom", header.frame_bottom, kWord);
    });
    io.Rare("word_0", header.word_0, kWord);
    io.Rare("word_2", header.word_2, kWord);
    io.Rare("word_14", header.word_14, kWord);
    io.Rare("word_16", header.word_16, kWord);
    io.Rare("word_18", header.word_18, kWord);
    io.Optional("last_row", header.last_row, 0, kWord);
    FontNumberKeys(io, header.font_numbers);
}

template <class Io, class Flash>
void FlashKeys(Io& io, Flash& flash) {
    io.Number("encoding_size", flash.encoding_size, kDoubleWord);
    io.Number("word_table_size", flash.word_table_size, kDoubleWord);
    io.Optional("data_size", flash.data_size, 0, kLargestFile);
    if (Io::kReads || flash.content.empty()) io.Number("fill", flash.fill, kByte);
    io.Bytes("content", flash.content, PassedOver::kYes);
}

/// Colour sets of up to 32 entries, "#RRGGBB"; the byte that nothing reads follows if it isn't FF.
void ColourKeys(KeyWriter& io, const std::vector<std::uint32_t>& entries);
void ColourKeys(KeyReader& io, std::vector<std::uint32_t>& entries);

template <class Io, class Palette>
void PaletteKeys(Io& io, Palette& palette) {
    io.Rare("lead", palette.palette_lead, kWord);
    io.Optional("words", palette.palette_words, 0, kWord);
    ColourKeys(io, palette.entries);
    io.Optional("half_entry", palette.half_entry, 0, kWord);
}

template <class Io, class Background>
void BackgroundKeys(Io& io, Background& background) {
    io.Required("tag", background.tag, kWord);
    io.Optional("words", background.words, 0, kWord);
    io.Rare("value", background.value, kWord);
    files::Bytes content = BytesOfWords(background.content);
    io.Bytes("content", content, PassedOver::kYes);
    if constexpr (Io::kReads) {
        if (content.size() % 2 != 0) io.AddFault("content", "has an odd number of bytes");
        background.content = WordsOfBytes(content);
    }
}

template <class Io, class Field, class Faulty>
void FieldKeys(Io& io, Field& field, Faulty& faulty) {
    io.Flag("faulty", faulty);
    io.Text("name", field.tab_name, 17);
    io.Required("row", field.tab_row, kSixBits);
    io.Required("start", field.tab_start, kWord);
    io.Required("end", field.tab_end, kWord);
    io.Number("font", field.tab_font, 31);
    io.Number("colour", field.tab_colour, 15);
    io.Rare("tab_byte", field.tab_byte, kByte);
    io.Rare("tab_a", field.tab_a, 15);
    io.Rare("tab_flags", field.tab_flags, 31);
    io.Rare("b25", field.b25, kByte);
}

/// Whether an import rejects a field. @param row_count  of the message.
inline bool IsRejected(const files::TabField& field, std::size_t row_count) {
    return field.tab_start >= field.tab_end || field.tab_row >= row_count;
}

/// Reads or writes a field and, when it reads, checks it.
template <class Io, class Field>
void CheckedFieldKeys(Io& io, Field& field, std::size_t row_count) {
    bool faulty = IsRejected(field, row_count);
    FieldKeys(io, field, faulty);
    if constexpr (Io::kReads) {
        if (faulty) return;
        if (field.tab_row >= row_count) {
            io.AddFault("row", std::to_string(field.tab_row) + " is no row: the message has " +
                                   std::to_string(row_count) + " rows");
        }
        if (field.tab_start >= field.tab_end) {
            io.AddFault("start",
                        std::to_string(field.tab_start) + " is not below end, " + std::to_string(field.tab_end));
        }
    }
}

template <class Io, class Tabs>
void TabKeys(Io& io, Tabs& tabs, std::size_t row_count) {
    io.Rare("version", tabs.tab_version, kWord, 2);
    io.Optional("words", tabs.tab_words, 0, kWord);
    io.Rare("third_word", tabs.third_word, kWord);
    io.List(
        "fields", tabs.fields, files::kMostTabFields,
        [row_count](auto& inner, auto& field, std::size_t, std::size_t) { CheckedFieldKeys(inner, field, row_count); });
}

/// Keys of the header that messages and fonts have in common.
template <class Io, class Psos>
void PsosKeys(Io& io, Psos& psos) {
    io.Text("type_name", psos.type_name, 128);
    io.Rare("word_4", psos.word_4, kDoubleWord);
}

/// The rows, which the parser of a document reads one by one: no reader needs them as JSON.
void RowsKey(KeyWriter& io, const std::vector<files::RowText>& rows);
void RowsKey(KeyReader& io, std::vector<files::RowText>& rows);

/// "PAL" or "NTSC".
void StandardKey(KeyWriter& io, bool pal);
void StandardKey(KeyReader& io, bool& pal);

template <class Io, class Message>
void MessageKeys(Io& io, Message& message) {
    PsosKeys(io, message.psos);
    StandardKey(io, message.pal);
    io.Optional("section_flags", message.section_flags, 0, kWord);
    io.Numbers("more_flags", message.more_flags);
    io.Part("flash_font", message.flash_font, [](auto& inner, auto& flash) { FlashKeys(inner, flash); });
    HeaderKeys(io, message.header);
    RowsKey(io, message.rows);
    io.Part("palette", message.palette, [](auto& inner, auto& palette) { PaletteKeys(inner, palette); });
    io.Part("background", message.background, [](auto& inner, auto& background) { BackgroundKeys(inner, background); });
    const std::size_t row_count = message.header.last_row.value_or(static_cast<unsigned>(message.rows.size() - 1)) + 1U;
    io.Part("tab_table", message.tabs, [&](auto& inner, auto& tabs) { TabKeys(inner, tabs, row_count); });
    io.Bytes("tail", message.tail, PassedOver::kYes);
    io.Optional("cut_at", message.size, 0, kLargestFile);
}

}  // namespace zel::filejson
