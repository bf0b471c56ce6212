#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "samples/byte_writer.h"
#include "samples/psos_header.h"
#include "samples/run_codes.h"

/// Describes a font file section by section and writes its bytes. Fields have the names of the format; a field that no
/// reader looks at is named by its offset. A field wider than its place is cut to it. An optional field that is left
/// out is worked out from what the description holds.
namespace zel::samples {

constexpr unsigned kFontCharCount = 192;

/// Bits and values of font_flags.
constexpr unsigned kPlainFont = 0x20;      ///< encoding data behind the directory
constexpr unsigned kHasCharTables = 0x04;  ///< two tables of 384 bytes
constexpr unsigned kSampleFirstFont = 18;  ///< encoding data, then a sample block, then the rest

/// The font header, 128 bytes.
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
    std::optional<std::uint32_t> encoding_size{};    ///<  98  left out: the size of the encoding data
    std::optional<int> aux_block_size{};             ///< 102  left out: the size of the auxiliary block
    unsigned font_flags = kPlainFont;                ///< 104
    std::array<std::uint16_t, 6> words_106{};        ///< 106
    int row_inset = 0;                               ///< 118  lines
    std::optional<std::uint32_t> word_table_size{};  ///< 120  left out: two bytes for each word
    std::optional<unsigned> sample_present{};        ///< 124  left out: 1 with a sample block, else 0
    unsigned word_126 = 0;                           ///< 126
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
};

/// A stored bitmap glyph record: a head of 12 bytes, then the pixels.
struct StoredGlyph {
    unsigned width = 0;
    unsigned height = 0;
    Bytes pixels{};                         ///< alpha, blue, green, red, the colours multiplied by alpha; top row first
    std::optional<std::uint32_t> length{};  ///< left out: 12 and the size of the pixels
    unsigned flags_word = 0;                ///< bit 15 is the flag that reaches the host
    unsigned word_6 = 0;
    std::optional<unsigned> width_word{};   ///< left out: width + 1
    std::optional<unsigned> height_word{};  ///< left out: height
};

/// One of the two samples of a sample block.
struct Sample {
    int width = 0;   ///< bytes in a row
    int height = 0;  ///< rows
    Bytes rows{};    ///< written as they are
};

/// A sample block: a head of 10 bytes, then the rows of both samples.
struct SampleBlock {
    unsigned first_word = 0;
    Sample a{};
    Sample b{};
};

/// A whole font file.
struct FontFile {
    PsosHeader psos{500, 0, ""};
    FontHeader header{};
    std::array<CharEntry, kFontCharCount> directory{};
    Bytes encoding{};                           ///< written with font_flags 18 or with bit 0x20 set
    std::optional<SampleBlock> first_sample{};  ///< directly behind the encoding data; read with font_flags 18
    Bytes aux_block{};
    std::vector<std::uint16_t> word_table{};
    Bytes char_table_a{};  ///< 384 bytes, filled up with zeros; written with bit 0x04 of font_flags
    Bytes char_table_b{};
    std::optional<SampleBlock> sample{};       ///< the usual place, behind the tables
    std::map<unsigned, StoredGlyph> stored{};  ///< records by character code, which is their order in the file
    Bytes tail{};                              ///< bytes behind the last record

    /// Adds run codes to the encoding data and points the character's entry at them.
    void AddRunCoded(unsigned char_code, const RunCodes& codes, unsigned glyph_top, unsigned glyph_metric);
    /// Adds a record and makes the character's entry a stored one.
    void AddStored(unsigned char_code, StoredGlyph glyph, unsigned glyph_top, unsigned glyph_metric);
};

/// Where the sections of a written font lie; a section that isn't there lies where it would have begun.
struct FontOffsets {
    std::size_t header = 0, directory = 0, encoding = 0, first_sample = 0, aux_block = 0, word_table = 0,
                char_tables = 0, sample = 0, tail = 0;
    std::map<unsigned, std::size_t> stored{};  ///< by character code
};

/// The file's bytes. `offsets` may be null.
Bytes WriteFont(const FontFile& font, FontOffsets* offsets = nullptr);

/// The bytes of one record each, as they stand in the file.
std::array<std::uint8_t, 10> WriteCharEntry(const CharEntry& entry);
Bytes WriteFontHeader(const FontFile& font);
Bytes WriteStoredGlyph(const StoredGlyph& glyph);

/// An RGBA file of type 714 or 717: the 136-byte header, then one stored glyph record.
Bytes WriteRgbaFile(std::uint32_t file_type, const StoredGlyph& picture);

/// The name of the font or message file of a number: a dot and at least four digits.
std::string NumberedName(unsigned number);

}  // namespace zel::samples
