#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "files/byte_writer.h"
#include "files/psos_header.h"
#include "files/run_codes.h"

/// Describes a font file section by section and writes its bytes. Fields have the format's names; a field that no
/// reader uses is named by its offset. A value too wide for its field is truncated. An optional field without a value
/// is computed from the rest of the description. font_reader.h makes such a description of a file.
namespace zel::files {

constexpr unsigned kFontCharCount = 192;

/// Bits and values of font_flags.
/// The directory is followed by encoding data.
constexpr unsigned kPlainFont = 0x20;
/// Two tables of 384 bytes follow.
constexpr unsigned kHasCharTables = 0x04;
/// The value of a font in which a sample block follows the encoding data, before the other blocks.
constexpr unsigned kSampleFirstFont = 18;

/// Whether the directory is followed by encoding data.
constexpr bool HasEncodingPlace(unsigned font_flags) noexcept {
    return font_flags == kSampleFirstFont || (font_flags & kPlainFont) != 0;
}

/// The font header, 128 bytes. A text ends at its first zero; what follows the zero is kept.
struct FontHeader {
    std::string font_name{};                         ///<   0  70 bytes
    std::string font_id_text{};                      ///<  70  4 bytes
    std::uint32_t dword_74 = 0;                      ///<  74
    int font_height = 0;                             ///<  78  lines, edge included
    int row_top_offset = 0;                          ///<  80  lines
    unsigned word_82 = 0;                            ///<  82
    unsigned edge_type = 0;                          ///<  84  4 bits: 1 border, 2 drop shadow, 3 offset
    unsigned edge_direction = 0;                     ///<  84  4 bits
    unsigned edge_size = 0;                          ///<  85
    unsigned bits_86 = 0;                            ///<  86  7 bits
    unsigned bits_87 = 0;                            ///<  86  9 bits
    std::array<std::uint8_t, 6> bytes_88{};          ///<  88
    std::uint32_t dword_94 = 0;                      ///<  94
    std::optional<std::uint32_t> encoding_size{};    ///<  98  default: the size of the encoding data
    std::optional<int> aux_block_size{};             ///< 102  default: the size of the auxiliary block
    unsigned font_flags = kPlainFont;                ///< 104
    std::array<std::uint16_t, 6> words_106{};        ///< 106
    int row_inset = 0;                               ///< 118  lines
    std::optional<std::uint32_t> word_table_size{};  ///< 120  default: two bytes for each word, one for an odd byte
    std::optional<unsigned> sample_present{};        ///< 124  default: 1 with a sample block, else 0
    unsigned word_126 = 0;                           ///< 126

    bool operator==(const FontHeader&) const = default;
};

/// A directory entry, 10 bytes; the character code is its index.
struct CharEntry {
    static constexpr unsigned kStored = 170, kRunCoded = 0x02, kRunCodedToo = 0x40;

    unsigned glyph_kind = 0;         ///< 0
    unsigned byte_1 = 0;             ///< 1
    unsigned glyph_bits_a = 0;       ///< 2  6 bits
    unsigned glyph_bits_b = 0;       ///<    6 bits
    unsigned glyph_top = 0;          ///<    10 bits, lines
    unsigned glyph_metric = 0;       ///<    10 bits, pixels
    std::uint32_t glyph_offset = 0;  ///< 6  first run code in the encoding data

    bool operator==(const CharEntry&) const = default;
};

/// A stored bitmap glyph record: a head of 12 bytes, then the pixels.
struct StoredGlyph {
    unsigned width = 0;
    unsigned height = 0;
    Bytes pixels{};  ///< alpha, blue, green, red; the colours multiplied by alpha; the top row first
    std::optional<std::uint32_t> length{};  ///< default: 12 and the size of the pixels
    unsigned flags_word = 0;                ///< bit 15 is the flag that the host receives
    unsigned word_6 = 0;
    std::optional<unsigned> width_word{};   ///< default: width + 1
    std::optional<unsigned> height_word{};  ///< default: height

    bool operator==(const StoredGlyph&) const = default;
};

/// One of the two samples of a sample block.
struct Sample {
    int width = 0;   ///< bytes in a row
    int height = 0;  ///< rows
    Bytes rows{};    ///< written unchanged

    bool operator==(const Sample&) const = default;
};

/// A sample block: a head of 10 bytes, then the rows of both samples.
struct SampleBlock {
    unsigned first_word = 0;
    Sample a{};
    Sample b{};

    bool operator==(const SampleBlock&) const = default;
};

/// A complete font file.
struct FontFile {
    PsosHeader psos{500, 0, ""};
    FontHeader header{};
    std::array<CharEntry, kFontCharCount> directory{};
    /// Written if font_flags is 18 or has bit 0x20.
    Bytes encoding{};
    /// Directly after the encoding data; read if font_flags is 18.
    std::optional<SampleBlock> first_sample{};
    Bytes aux_block{};
    std::vector<std::uint16_t> word_table{};
    /// After the last word, if the word table has an odd size.
    std::optional<std::uint8_t> word_table_odd_byte{};
    /// 384 bytes, filled up with zeros; written if font_flags has bit 0x04.
    Bytes char_table_a{};
    Bytes char_table_b{};
    /// The usual place, after the tables.
    std::optional<SampleBlock> sample{};
    /// Records by character code, in which order they are written.
    std::map<unsigned, StoredGlyph> stored{};
    /// Bytes after the last record that a reader reads.
    Bytes tail{};
    /// The file's size, if the file ends before its last section does. What is missing reads as zero.
    std::optional<std::size_t> size{};

    /// Adds run codes to the encoding data and points the character's entry at them.
    void AddRunCoded(unsigned char_code, const RunCodes& codes, unsigned glyph_top, unsigned glyph_metric);
    /// Adds a record and makes the character's entry a stored one.
    void AddStored(unsigned char_code, StoredGlyph glyph, unsigned glyph_top, unsigned glyph_metric);

    bool operator==(const FontFile&) const = default;
};

/// The offsets of a written font's sections; for a missing section, where it would begin.
struct FontOffsets {
    std::size_t header = 0, directory = 0, encoding = 0, first_sample = 0, aux_block = 0, word_table = 0,
                char_tables = 0, sample = 0, tail = 0;
    /// By character code.
    std::map<unsigned, std::size_t> stored{};
};

/// The file's bytes. @param offsets  may be null.
Bytes WriteFont(const FontFile& font, FontOffsets* offsets = nullptr);

/// word_table_size and sample_present as the rest of the description gives them.
std::uint32_t ComputedWordTableSize(const FontFile& font);
unsigned ComputedSamplePresent(const FontFile& font);

/// The bytes of one record, as in the file.
std::array<std::uint8_t, 10> WriteCharEntry(const CharEntry& entry);
Bytes WriteFontHeader(const FontFile& font);
Bytes WriteStoredGlyph(const StoredGlyph& glyph);

/// An RGBA file of type 714 or 717: the 136-byte header, then one stored glyph record.
Bytes WriteRgbaFile(std::uint32_t file_type, const StoredGlyph& picture);

}  // namespace zel::files
