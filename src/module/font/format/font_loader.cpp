#include "module/font/format/font_loader.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "module/font/format/convert_char_entry.h"
#include "module/font/format/convert_font_header.h"
#include "module/font/format/samples.h"
#include "module/message/format/big_endian_cursor.h"
#include "module/message/format/convert_headers.h"

namespace zel::font {

namespace {

// The sections of one font file, in file order. Each reader takes what it needs from m_file at m_offset and moves on.
class FontReader {
  public:
    FontReader(message::ByteSource& file, tag_font_memory& slot, message::SectionObserver* observer) noexcept
        : m_file(file), m_slot(slot), m_observer(observer) {}

    FontOutcome Read(bool& tessor);

  private:
    FontOutcome ReadPsosHeader();
    FontOutcome ReadFontHeader();
    FontOutcome ReadDirectory();
    FontOutcome ReadLeadingBlocks();
    FontOutcome ReadBlock(const char* name, std::int64_t size, std::uint8_t*& block, FontOutcome when_short);
    FontOutcome ReadWordTable();
    FontOutcome ReadCharTables();
    FontOutcome ReadSampleBlock(FontOutcome when_head_short);
    FontOutcome LocateStoredGlyphs();

    void Observe(const char* name, std::uint64_t size) {
        if (m_observer != nullptr) m_observer->OnSection(name, m_offset, size, std::min(size, m_file.Left(m_offset)));
    }

    message::ByteSource& m_file;
    tag_font_memory& m_slot;
    message::SectionObserver* m_observer;
    std::uint64_t m_offset = 0;
};

FontOutcome FontReader::Read(bool& tessor) {
    tessor = false;
    FontOutcome end = ReadPsosHeader();
    if (end == FontOutcome::kRead) end = ReadFontHeader();
    if (end == FontOutcome::kRead) end = ReadDirectory();
    if (end != FontOutcome::kRead) return end;
    const tag_font_header& header = *m_slot.font_header;
    if (header.encoding_size != 0 && header.font_flags == kFontFlagsLeadingSample) end = ReadLeadingBlocks();
    if (end != FontOutcome::kRead) return end;
    if ((header.font_flags & kFontPlain) == 0) {
        tessor = true;
    } else if (header.encoding_size != 0) {
        end = ReadBlock("encoding data", header.encoding_size, m_slot.encoding_data, FontOutcome::kShortEncoding);
    }
    if (end == FontOutcome::kRead && header.aux_block_size != 0) {
        end = ReadBlock("auxiliary block", header.aux_block_size, m_slot.aux_block, FontOutcome::kShortBlock);
    }
    if (end == FontOutcome::kRead && header.WordTableBytes() != 0) end = ReadWordTable();
    if (end == FontOutcome::kRead && (header.font_flags & kFontCharTables) != 0) end = ReadCharTables();
    if (end == FontOutcome::kRead && header.sample_present != 0) end = ReadSampleBlock(FontOutcome::kShortBlock);
    return end == FontOutcome::kRead ? LocateStoredGlyphs() : end;
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
    const FontOutcome end = ReadBlock("encoding data", m_slot.font_header->encoding_size, m_slot.encoding_data,
                                      FontOutcome::kShortLeadingEncoding);
    if (end != FontOutcome::kRead || m_slot.font_header->sample_present == 0) return end;
    return ReadSampleBlock(FontOutcome::kShortLeadingSample);
}

// Takes no memory for a block that the file can't hold.
FontOutcome FontReader::ReadBlock(const char* name, std::int64_t size, std::uint8_t*& block, FontOutcome when_short) {
    if (size < 0) return FontOutcome::kNoMemory;
    const std::uint64_t wanted = static_cast<std::uint64_t>(size);
    Observe(name, wanted);
    if (wanted > m_file.Left(m_offset)) return when_short;
    block = static_cast<std::uint8_t*>(std::malloc(static_cast<std::size_t>(wanted)));
    if (block == nullptr) return FontOutcome::kNoMemory;
    if (m_file.Read(m_offset, {block, static_cast<std::size_t>(wanted)}) != wanted) return when_short;
    m_offset += wanted;
    return FontOutcome::kRead;
}

FontOutcome FontReader::ReadWordTable() {
    const std::int16_t size = m_slot.font_header->WordTableBytes();
    std::uint8_t* block = nullptr;
    const FontOutcome end = ReadBlock("word table", size, block, FontOutcome::kShortBlock);
    m_slot.word_table = reinterpret_cast<std::uint16_t*>(block);  // from malloc, aligned for any type
    if (end != FontOutcome::kRead) return end;
    for (int i = 0; i < size / 2; ++i) m_slot.word_table[i] = message::SwapWord(m_slot.word_table[i]);
    return end;
}

FontOutcome FontReader::ReadCharTables() {
    const FontOutcome end =
        ReadBlock("character table a", kCharTableSize, m_slot.char_table_a, FontOutcome::kShortBlock);
    if (end != FontOutcome::kRead) return end;
    return ReadBlock("character table b", kCharTableSize, m_slot.char_table_b, FontOutcome::kShortBlock);
}

FontOutcome FontReader::ReadSampleBlock(FontOutcome when_head_short) {
    const auto bytes = m_file.At(m_offset, sizeof(tag_samp_struct));
    const tag_samp_struct samp = ConvertSampleHead(bytes);
    const auto rows_size = [](std::int16_t width, std::int16_t height) {
        return static_cast<std::uint64_t>(std::max(width * SampleRows(height), 0));
    };
    Observe("sample block",
            sizeof samp + rows_size(samp.width_a, samp.height_a) + rows_size(samp.width_b, samp.height_b));
    if (bytes.size() != sizeof samp) return when_head_short;
    m_offset += sizeof samp;
    // The second block of a font takes the place of the first, whose rows nobody reads any more.
    for (tag_graphic_rectangle* sample : {&m_slot.sample_a, &m_slot.sample_b}) {
        std::free(sample->data);
        sample->data = nullptr;
    }
    const auto read_row = [this](std::uint8_t* row, std::size_t width) {
        const std::size_t came = m_file.Read(m_offset, {row, width});
        m_offset += came;
        return came == width;
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

}  // namespace

FontOutcome LoadFont(message::ByteSource& file, tag_font_memory& slot, bool& tessor,
                     message::SectionObserver* observer) {
    try {
        return FontReader(file, slot, observer).Read(tessor);
    } catch (const std::bad_alloc&) {
        return FontOutcome::kNoMemory;
    }
}

}  // namespace zel::font
