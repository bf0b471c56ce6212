#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/byte_writer.h"
#include "files/psos_header.h"

/// Describes a message file section by section and writes its bytes. Fields have the names of the format; `b2_bit5`
/// is bit 5 of a record's byte 2, a field without a known meaning. A value too wide for its field is truncated. An
/// optional field without a value is computed from the rest of the description. message_reader.h makes such a
/// description of a file.
namespace zel::files {

/// A character record, 8 bytes.
struct CharCell {
    bool b0_bit7 = false;
    bool place_flag = false;   ///< b0 bit 6
    bool chain_end = false;    ///< b0 bit 5
    unsigned b0_bits4to2 = 0;  ///< 3 bits
    unsigned char_x = 0;       ///< 10 bits, pixels
    unsigned b2_bits7to6 = 0;  ///< 2 bits
    bool b2_bit5 = false;
    unsigned colour_set = 0;  ///< 3 bits
    unsigned char_y = 0;      ///< 10 bits, lines
    unsigned char_font = 0;   ///< 6 bits, a slot below 16
    unsigned char_code = 0;   ///< 10 bits
    unsigned b6_word = 0;     ///< 10 bits, b6 and the top of b7
    unsigned next_char = 63;  ///< 6 bits, 63 ends the chain

    bool operator==(const CharCell&) const = default;
};

/// A row: its head of 8 bytes, then its records. The records are written even if `row_empty` is set.
struct RowText {
    bool b0_bit7 = false;
    bool b0_bit6 = false;
    bool row_empty = false;                ///< b0 bit 5
    unsigned b0_bits4to2 = 0;              ///< 3 bits
    unsigned row_y = 0;                    ///< 10 bits, lines
    unsigned first_char = 0;               ///< 6 bits
    unsigned row_top = 0;                  ///< 10 bits, lines below row_y
    std::optional<unsigned> char_count{};  ///< 6 bits; default: the number of records
    unsigned row_bottom = 0;               ///< 10 bits, lines below row_y
    unsigned b6 = 0;                       ///< all of byte 6
    unsigned b7 = 0;                       ///< all of byte 7
    std::vector<CharCell> cells{};

    bool operator==(const RowText&) const = default;
};

/// The palette section.
struct PaletteBlock {
    unsigned palette_lead = 0;
    /// Default: two for each entry, one for a half entry. A reader takes 512 at most.
    std::optional<unsigned> palette_words{};
    /// 256 in a complete palette, beginning with entry 0 of set 0.
    std::vector<std::uint32_t> entries{};
    /// The last word of an odd number of words: the high half of one more entry.
    std::optional<std::uint16_t> half_entry{};

    bool operator==(const PaletteBlock&) const = default;
};

/// The background section.
struct BackgroundBlock {
    unsigned tag = 0xBBBB;
    /// Default: 1536, 1154 or 974, by the tag; 0 for an unknown tag.
    std::optional<std::size_t> words{};
    /// The value of all words.
    unsigned value = 0;
    /// The words, if they aren't equal; then the two above have no meaning.
    std::vector<std::uint16_t> content{};

    bool operator==(const BackgroundBlock&) const = default;
};

/// A record of the tab table, 26 bytes. A name ends at its first zero; what follows the zero is kept.
struct TabField {
    unsigned tab_start = 0;
    unsigned tab_end = 0;
    unsigned tab_byte = 0;
    std::string tab_name = "un-named";  ///< 17 bytes
    unsigned tab_row = 0;               ///< 6 bits
    unsigned tab_a = 0;                 ///< 4 bits
    unsigned tab_font = 0;              ///< 5 bits
    unsigned tab_colour = 0;            ///< 4 bits
    unsigned tab_flags = 0;             ///< 5 bits, b24 bits 4 to 0
    unsigned b25 = 0;

    bool operator==(const TabField&) const = default;
};

/// The tab table.
struct TabTable {
    unsigned tab_version = 2;
    /// Default: 13 for each record.
    std::optional<unsigned> tab_words{};
    unsigned third_word = 0;
    std::vector<TabField> fields{};

    bool operator==(const TabTable&) const = default;
};

/// The flash font block. A reader uses only the two sizes.
struct FlashFont {
    std::uint32_t encoding_size = 0;
    std::uint32_t word_table_size = 0;
    /// Bytes of font data; default: the sum of the two sizes.
    std::optional<std::size_t> data_size{};
    /// The value of every byte outside the two sizes.
    std::uint8_t fill = 0xEE;
    /// The bytes outside the two sizes, if they aren't equal; then the two above have no meaning.
    Bytes content{};

    /// Bytes of the block without the two sizes and without font data.
    static constexpr std::size_t kFixedContent = 8 + (128 - 2 * 4) + 192 * 10;

    bool operator==(const FlashFont&) const = default;
};

/// The 26 words of message values.
struct MessageHeader {
    unsigned word_0 = 0;
    unsigned word_2 = 0;
    std::optional<unsigned> last_row{};  ///< default: one less than the number of rows
    unsigned frame_left = 0;
    unsigned frame_top = 0;
    unsigned frame_right = 0;
    unsigned frame_bottom = 0;
    unsigned word_14 = 0;
    unsigned word_16 = 0;
    unsigned word_18 = 0;
    std::array<std::uint16_t, 16> font_numbers = NoFonts();

    /// 65535 in all 16 slots.
    static constexpr std::array<std::uint16_t, 16> NoFonts() noexcept {
        std::array<std::uint16_t, 16> numbers{};
        for (auto& number : numbers) number = 65535;
        return numbers;
    }

    bool operator==(const MessageHeader&) const = default;
};

/// A complete message file.
struct MessageFile {
    PsosHeader psos{702, 0, ""};
    /// Bit 15 of section_flags, if those have no value.
    bool pal = false;
    /// Default: the bits of the sections that are present, and of `pal`.
    std::optional<unsigned> section_flags{};
    std::array<std::uint16_t, 7> more_flags{};
    std::optional<FlashFont> flash_font{};
    MessageHeader header{};
    std::vector<RowText> rows{};
    std::optional<PaletteBlock> palette{};
    std::optional<BackgroundBlock> background{};
    std::optional<TabTable> tabs{};
    /// Bytes after the last section that a reader reads.
    Bytes tail{};
    /// The file's size, if the file ends before its last section does. What is missing reads as zero.
    std::optional<std::size_t> size{};

    bool operator==(const MessageFile&) const = default;
};

/// The offsets of a written message's sections; for a missing section, where it would begin.
struct MessageOffsets {
    std::size_t flags = 0, flash_font = 0, header = 0, rows = 0, palette = 0, background = 0, tabs = 0, tail = 0;
};

/// The file's bytes. @param offsets  may be null.
Bytes WriteMessage(const MessageFile& message, MessageOffsets* offsets = nullptr);

/// section_flags with the bits of the sections that are present, and of `pal`.
unsigned ComputedSectionFlags(const MessageFile& message);

/// The bytes of one record, as in the file.
std::array<std::uint8_t, 8> WriteCharCell(const CharCell& cell);
std::array<std::uint8_t, 8> WriteRowHead(const RowText& row);
Bytes WriteTabField(const TabField& field);

/// A stored palette entry of a colour: green, blue, 255, red from the top byte down.
constexpr std::uint32_t PaletteEntry(unsigned red, unsigned green, unsigned blue) noexcept {
    return (green & 0xFFU) << 24 | (blue & 0xFFU) << 16 | 0xFF00U | (red & 0xFFU);
}

/// A row of one text: each character `advance` pixels after the one before, else like `like`, chained in order.
RowText RowFromText(unsigned row_y, std::string_view text, unsigned char_x, unsigned advance,
                    const CharCell& like = {});

/// A row without characters.
RowText EmptyRow(unsigned row_y);

/// Links the records in their order: `first_char` 0, the last one 63 and `chain_end`.
void ChainInOrder(RowText& row);

/// Moves the records of a row that is chained in order, and keeps the reading order by the chain.
/// @param places  places[k] is the record that the k-th character takes; a permutation of 0 to the number of records
/// - 1.
/// @throws std::invalid_argument when it isn't one.
void ShuffleRecords(RowText& row, std::span<const unsigned> places);

}  // namespace zel::files
