#include "files/font_reader.h"

#include <algorithm>
#include <optional>

#include "files/font_fields.h"

namespace zel::files {
namespace {

constexpr std::uint32_t kFontType = 500;
constexpr std::size_t kHeadersSize =
    PsosHeaderFields::kSize + FontHeaderFields::kSize + kFontCharCount * CharEntryFields::kSize;

// Reads the sections in file order. A function that returns false ends the reading there.
class FontSections {
  public:
    explicit FontSections(std::span<const std::uint8_t> file) noexcept : m_size(file.size()), m_cursor(file) {}

    FontFile Read();

  private:
    void ReadHeaders();
    bool ReadBlocks();
    bool ReadFirstBlocks();
    bool ReadWordTable();
    bool ReadSample(std::optional<SampleBlock>& block);
    bool ReadSampleRows(Sample& sample);
    void ReadCharTables();
    bool ReadStored(unsigned char_code);
    void SetSizes();

    bool NextBytes(std::uint64_t count, Bytes& bytes) {
        const auto next = m_cursor.Next(count);
        bytes.assign(next.begin(), next.end());
        return next.size() == count;
    }

    std::size_t m_size;
    FileCursor m_cursor;
    FontFile m_font;
    std::uint32_t m_encoding_size = 0, m_word_table_size = 0;
    int m_aux_block_size = 0;
    unsigned m_sample_present = 0;
};

FontFile FontSections::Read() {
    ReadHeaders();
    const bool whole = ReadBlocks();
    if ((m_font.header.font_flags & kHasCharTables) != 0) ReadCharTables();
    if (whole && (m_sample_present == 0 || ReadSample(m_font.sample))) {
        for (unsigned code = 0; code < kFontCharCount; ++code) {
            if (m_font.directory[code].glyph_kind == CharEntry::kStored && !ReadStored(code)) break;
        }
    }
    const auto tail = m_cursor.Rest();
    m_font.tail.assign(tail.begin(), tail.end());
    SetSizes();
    if (m_cursor.PassedEnd()) m_font.size = m_size;
    return std::move(m_font);
}

void FontSections::ReadHeaders() {
    ReadRecord<PsosHeaderFields>(m_cursor.Next(PsosHeaderFields::kSize), m_font.psos);
    ReadRecord<FontHeaderFields>(m_cursor.Next(FontHeaderFields::kSize), m_font.header, m_encoding_size,
                                 m_aux_block_size, m_word_table_size, m_sample_present);
    for (CharEntry& entry : m_font.directory) {
        ReadRecord<CharEntryFields>(m_cursor.Next(CharEntryFields::kSize), entry);
    }
}

// The blocks before the character tables.
bool FontSections::ReadBlocks() {
    if (!ReadFirstBlocks() || m_aux_block_size < 0) return false;
    return NextBytes(static_cast<std::uint64_t>(m_aux_block_size), m_font.aux_block) && ReadWordTable();
}

bool FontSections::ReadFirstBlocks() {
    const unsigned flags = m_font.header.font_flags;
    if (m_encoding_size == 0 || !HasEncodingPlace(flags)) return true;
    if (!NextBytes(m_encoding_size, m_font.encoding)) return false;
    return flags != kSampleFirstFont || m_sample_present == 0 || ReadSample(m_font.first_sample);
}

// A reader takes the low 16 bits of the size, with a sign.
bool FontSections::ReadWordTable() {
    const auto size = static_cast<std::int16_t>(m_word_table_size);
    if (size < 0) return false;
    const auto bytes = m_cursor.Next(static_cast<std::uint64_t>(size));
    m_font.word_table.resize(bytes.size() / 2);
    for (std::size_t k = 0; k < m_font.word_table.size(); ++k) {
        ReadRecord<NumberFields<2>>(bytes.subspan(2 * k), m_font.word_table[k]);
    }
    if (bytes.size() % 2 != 0) m_font.word_table_odd_byte = bytes.back();
    return bytes.size() == static_cast<std::size_t>(size);
}

void FontSections::ReadCharTables() {
    for (Bytes* table : {&m_font.char_table_a, &m_font.char_table_b}) {
        NextBytes(kCharTableSize, *table);
        table->resize(kCharTableSize);
    }
}

bool FontSections::ReadSample(std::optional<SampleBlock>& sample) {
    if (m_cursor.AtEnd()) return false;
    SampleBlock& block = sample.emplace();
    ReadRecord<SampleHeadFields>(m_cursor.Next(SampleHeadFields::kSize), block);
    const auto is_negative = [](const Sample& one) { return one.width * one.height < 0; };
    if (m_cursor.PassedEnd() || is_negative(block.a) || is_negative(block.b)) return false;
    return ReadSampleRows(block.a) && ReadSampleRows(block.b);
}

// A row without width can't be read.
bool FontSections::ReadSampleRows(Sample& sample) {
    if (sample.height <= 0) return true;
    const auto size = static_cast<std::uint64_t>(sample.width) * static_cast<std::uint64_t>(sample.height);
    return size != 0 && NextBytes(size, sample.rows);
}

// The length of the last record may pass the end of the file.
bool FontSections::ReadStored(unsigned char_code) {
    const auto rest = m_cursor.Rest();
    std::uint32_t length = 0;
    ReadRecord<NumberFields<4>>(rest, length);
    if (rest.size() < StoredHeadFields::kSize || length < StoredHeadFields::kSize) return false;
    StoredGlyph& glyph = m_font.stored[char_code];
    unsigned width_word = 0, height_word = 0;
    ReadRecord<StoredHeadFields>(m_cursor.Next(StoredHeadFields::kSize), glyph, length, width_word, height_word);
    const std::size_t size = std::min<std::size_t>(length - StoredHeadFields::kSize, m_cursor.Rest().size());
    NextBytes(size, glyph.pixels);
    SetUnlessComputed(glyph.length, length, static_cast<std::uint32_t>(StoredHeadFields::kSize + size));
    glyph.width = width_word == 0 ? 0 : width_word - 1;
    SetUnlessComputed(glyph.width_word, width_word, glyph.width + 1);
    glyph.height = height_word;
    return true;
}

void FontSections::SetSizes() {
    FontHeader& header = m_font.header;
    SetUnlessComputed(header.encoding_size, m_encoding_size, static_cast<std::uint32_t>(m_font.encoding.size()));
    SetUnlessComputed(header.aux_block_size, m_aux_block_size, static_cast<int>(m_font.aux_block.size()));
    SetUnlessComputed(header.word_table_size, m_word_table_size, ComputedWordTableSize(m_font));
    SetUnlessComputed(header.sample_present, m_sample_present, ComputedSamplePresent(m_font));
}

}  // namespace

Description<FontFile> ReadFont(std::span<const std::uint8_t> file) {
    Description<FontFile> result;
    ReadRecord<NumberFields<4>>(file, result.file_type);
    if (file.size() >= PsosHeaderFields::kSize && result.file_type != kFontType) {
        result.reason = NoDescription::kOtherType;
    } else if (file.size() < kHeadersSize) {
        result.reason = NoDescription::kShort;
    } else {
        result.file = FontSections(file).Read();
    }
    return result;
}

}  // namespace zel::files
