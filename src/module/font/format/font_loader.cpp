#include "module/font/format/font_loader.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "module/font/format/convert_char_entry.h"
#include "module/font/format/convert_font_header.h"
#include "module/font/format/font_blocks.h"
#include "module/font/format/samples.h"
#include "module/message/format/big_endian_cursor.h"
#include "module/message/format/convert_headers.h"

namespace zel::font {

namespace {

// Reads the sections of one font file, in file order. Each function reads its section, if the font has it, at m_offset
// and advances it.
class FontReader {
  public:
    FontReader(message::ByteSource& file, LoadedFont& font, message::SectionObserver* observer) noexcept
        : m_file(file), m_slot(font.slot), m_tessor(font.tessor), m_observer(observer) {}

    FontOutcome Read();

  private:
    FontOutcome ReadPsosHeader();
    FontOutcome ReadFontHeader();
    FontOutcome ReadDirectory();
    FontOutcome ReadLeadingBlocks();
    FontOutcome ReadEncodingData();
    FontOutcome ReadAuxiliaryBlock();
    FontOutcome ReadWordTable();
    FontOutcome ReadCharTables();
    FontOutcome ReadLastSampleBlock();
    FontOutcome LocateStoredGlyphs();

    FontOutcome ReadBlock(const char* name, std::int64_t size, std::uint8_t*& block, FontOutcome when_short);
    FontOutcome ReadSampleBlock(FontOutcome when_head_short);

    bool Allow(std::uint64_t size) noexcept {
        if (size > m_left) return false;
        m_left -= size;
        return true;
    }

    void Observe(const char* name, std::uint64_t size) {
        if (m_observer != nullptr) m_observer->OnSection(name, m_offset, size, std::min(size, m_file.Left(m_offset)));
    }

    message::ByteSource& m_file;
    tag_font_memory& m_slot;
    bool& m_tessor;
    message::SectionObserver* m_observer;
    // Bytes that the remaining blocks may have.
    std::uint64_t m_left = kMaxFontBytes;
    std::uint64_t m_offset = 0;
};

FontOutcome FontReader::Read() {
    static constexpr FontOutcome (FontReader::*kSections[])() = {
        &FontReader::ReadPsosHeader,     &FontReader::ReadFontHeader,   &FontReader::ReadDirectory,
        &FontReader::ReadLeadingBlocks,  &FontReader::ReadEncodingData, &FontReader::ReadAuxiliaryBlock,
        &FontReader::ReadWordTable,      &FontReader::ReadCharTables,   &FontReader::ReadLastSampleBlock,
        &FontReader::LocateStoredGlyphs,
    };
    for (const auto read_section : kSections) {
        if (const FontOutcome outcome = (this->*read_section)(); outcome != FontOutcome::kRead) return outcome;
    }
    return FontOutcome::kRead;
}

FontOutcome FontReader::ReadPsosHeader() {
    Observe("Psos file header", sizeof(tag_psos_header));
    const auto bytes = m_file.At(m_offset, sizeof(tag_psos_header));
    m_slot.psos_header = new tag_psos_header(message::ConvertPsosHeader(bytes));
    m_offset += sizeof(tag_psos_header);
    if (bytes.size() != sizeof(tag_psos_header)) return FontOutcome::kShortPsosHeader;
    return m_slot.psos_header->file_type == kFontFileType ? FontOutcome::kRead : FontOutcome::kWrongType;
}

FontOutcome FontReader::ReadFontHeader() {
    Observe("font header", sizeof(tag_font_header));
    const auto bytes = m_file.At(m_offset, sizeof(tag_font_header));
    m_slot.font_header = new tag_font_header(ConvertFontHeader(bytes));
    m_offset += sizeof(tag_font_header);
    return bytes.size() == sizeof(tag_font_header) ? FontOutcome::kRead : FontOutcome::kShortFontHeader;
}

FontOutcome FontReader::ReadDirectory() {
    constexpr std::size_t kSize = kDirectoryEntries * sizeof(tag_char_entry);
    Observe("character directory", kSize);
    m_slot.char_directory = static_cast<tag_char_entry*>(std::calloc(kDirectoryEntries, sizeof(tag_char_entry)));
    if (m_slot.char_directory == nullptr) return FontOutcome::kNoDirectoryMemory;
    const auto bytes = m_file.At(m_offset, kSize);
    m_offset += kSize;
    if (bytes.size() != kSize) return FontOutcome::kShortDirectory;
    ConvertCharEntries(bytes, m_slot.char_directory);
    return FontOutcome::kRead;
}

FontOutcome FontReader::ReadLeadingBlocks() {
    const tag_font_header& header = *m_slot.font_header;
    if (header.encoding_size == 0 || header.font_flags != kFontFlagsLeadingSample) return FontOutcome::kRead;
    const FontOutcome outcome =
        ReadBlock("encoding data", header.encoding_size, m_slot.encoding_data, FontOutcome::kShortLeadingEncoding);
    if (outcome != FontOutcome::kRead || header.sample_present == 0) return outcome;
    return ReadSampleBlock(FontOutcome::kShortLeadingSample);
}

FontOutcome FontReader::ReadEncodingData() {
    const tag_font_header& header = *m_slot.font_header;
    m_tessor = (header.font_flags & kFontPlain) == 0;
    if (m_tessor || header.encoding_size == 0) return FontOutcome::kRead;
    return ReadBlock("encoding data", header.encoding_size, m_slot.encoding_data, FontOutcome::kShortEncoding);
}

FontOutcome FontReader::ReadAuxiliaryBlock() {
    const std::int16_t size = m_slot.font_header->aux_block_size;
    if (size == 0) return FontOutcome::kRead;
    return ReadBlock("auxiliary block", size, m_slot.aux_block, FontOutcome::kShortBlock);
}

FontOutcome FontReader::ReadWordTable() {
    const std::int16_t size = m_slot.font_header->WordTableBytes();
    if (size == 0) return FontOutcome::kRead;
    std::uint8_t* block = nullptr;
    const FontOutcome outcome = ReadBlock("word table", size, block, FontOutcome::kShortBlock);
    m_slot.word_table = reinterpret_cast<std::uint16_t*>(block);  // malloc aligns for every type
    if (outcome != FontOutcome::kRead) return outcome;
    for (int i = 0; i < size / 2; ++i) m_slot.word_table[i] = message::SwapWord(m_slot.word_table[i]);
    return outcome;
}

FontOutcome FontReader::ReadCharTables() {
    if ((m_slot.font_header->font_flags & kFontCharTables) == 0) return FontOutcome::kRead;
    const FontOutcome outcome =
        ReadBlock("character table a", kCharTableSize, m_slot.char_table_a, FontOutcome::kShortBlock);
    if (outcome != FontOutcome::kRead) return outcome;
    return ReadBlock("character table b", kCharTableSize, m_slot.char_table_b, FontOutcome::kShortBlock);
}

FontOutcome FontReader::ReadLastSampleBlock() {
    if (m_slot.font_header->sample_present == 0) return FontOutcome::kRead;
    return ReadSampleBlock(FontOutcome::kShortBlock);
}

FontOutcome FontReader::LocateStoredGlyphs() {
    for (int i = 0; i < kDirectoryEntries; ++i) {
        tag_char_entry& entry = m_slot.char_directory[i];
        if (!entry.IsStored()) continue;
        std::uint8_t length[4];
        if (m_file.Read(m_offset, length) != sizeof length) {
            Observe("stored glyph", sizeof length);
            return FontOutcome::kShortBlock;
        }
        const std::uint32_t size = message::BigEndianCursor(length).U32();
        Observe("stored glyph", size);
        entry.glyph_offset = static_cast<std::uint32_t>(m_offset);
        m_offset += size;
    }
    return FontOutcome::kRead;
}

// Allocates no memory for a block that is larger than the rest of the file.
FontOutcome FontReader::ReadBlock(const char* name, std::int64_t size, std::uint8_t*& block, FontOutcome when_short) {
    if (size < 0) return FontOutcome::kNoMemory;
    const std::uint64_t wanted = static_cast<std::uint64_t>(size);
    Observe(name, wanted);
    if (wanted > m_file.Left(m_offset)) return when_short;
    if (!Allow(wanted)) return FontOutcome::kTooLarge;
    block = static_cast<std::uint8_t*>(std::malloc(static_cast<std::size_t>(wanted)));
    if (block == nullptr) return FontOutcome::kNoMemory;
    if (m_file.Read(m_offset, {block, static_cast<std::size_t>(wanted)}) != wanted) return when_short;
    m_offset += wanted;
    return FontOutcome::kRead;
}

FontOutcome FontReader::ReadSampleBlock(FontOutcome when_head_short) {
    const auto bytes = m_file.At(m_offset, sizeof(tag_samp_struct));
    const tag_samp_struct samp = ConvertSampleHead(bytes);
    const auto rows_size = [](std::int16_t width, std::int16_t height) {
        return static_cast<std::uint64_t>(std::max(width * SampleRows(height), 0));
    };
    const std::uint64_t rows = rows_size(samp.width_a, samp.height_a) + rows_size(samp.width_b, samp.height_b);
    Observe("sample block", sizeof samp + rows);
    if (bytes.size() != sizeof samp) return when_head_short;
    m_offset += sizeof samp;
    if (rows <= m_file.Left(m_offset) && !Allow(rows)) return FontOutcome::kTooLarge;
    // The second sample block of a font replaces the first.
    for (tag_graphic_rectangle* sample : {&m_slot.sample_a, &m_slot.sample_b}) {
        std::free(sample->data);
        sample->data = nullptr;
    }
    const auto read_row = [this](std::uint8_t* row, std::size_t width) {
        const std::size_t size = m_file.Read(m_offset, {row, width});
        m_offset += size;
        return size == width;
    };
    switch (ReadSamples(samp, m_slot.sample_a, m_slot.sample_b, m_file.Left(m_offset), read_row)) {
        case SampleOutcome::kRead:
            return FontOutcome::kRead;
        case SampleOutcome::kNoMemory:
            return FontOutcome::kNoMemory;
        case SampleOutcome::kShortRow:
            break;
    }
    return FontOutcome::kShortSampleRow;
}

}  // namespace

LoadedFont::~LoadedFont() {
    ReleaseFontBlocks(slot);
}

tag_font_memory LoadedFont::Release() noexcept {
    const tag_font_memory released = slot;
    slot = {};
    return released;
}

FontOutcome LoadFont(message::ByteSource& file, LoadedFont& font, message::SectionObserver* observer) {
    try {
        return FontReader(file, font, observer).Read();
    } catch (const std::bad_alloc&) {
        return FontOutcome::kNoMemory;
    }
}

FontOutcome LoadFont(std::span<const std::uint8_t> file, LoadedFont& font, message::SectionObserver* observer) {
    message::ByteSource source(file);
    return LoadFont(source, font, observer);
}

}  // namespace zel::font
