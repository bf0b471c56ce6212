#include "module/message/format/message_loader.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

#include "module/contract/records/char_entry.h"
#include "module/contract/records/font_header.h"
#include "module/message/format/big_endian_cursor.h"
#include "module/message/format/convert_headers.h"
#include "module/message/format/convert_row.h"
#include "module/message/format/convert_tab_field.h"
#include "module/message/format/default_palette.h"

namespace zel::message {

void FreeRows::operator()(tag_msg_row* rows) const noexcept {
    std::free(rows);
}

namespace {

// A flash font begins with two double words and a font header; its character directory follows.
constexpr std::size_t kFlashFontHeaderOffset = 4 + 4;
constexpr std::size_t kFlashHeaderSize = kFlashFontHeaderOffset + sizeof(tag_font_header);
constexpr std::size_t kFlashEncodingSizeOffset = kFlashFontHeaderOffset + offsetof(tag_font_header, encoding_size);
constexpr std::size_t kFlashWordTableSizeOffset = kFlashFontHeaderOffset + offsetof(tag_font_header, word_table_size);
constexpr std::size_t kFlashDirectorySize = kDirectoryEntries * sizeof(tag_char_entry);
constexpr std::size_t kMaxPaletteWords = kColourSets * kSetEntries * 2;

// Number of 16-bit words that follow the tag of a background; 0 for an unknown tag.
constexpr std::uint64_t BackgroundWords(std::uint16_t tag) noexcept {
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

// Reads the sections of one message file, in file order. Each function reads its section at m_offset and advances it.
class MessageReader {
  public:
    MessageReader(ByteSource& file, LoadedMessage& message, SectionObserver* observer) noexcept
        : m_file(file), m_message(message), m_observer(observer) {}

    MessageOutcome Read();

  private:
    bool ReadFileHeader();
    bool ReadFlags();
    MessageOutcome CheckType() const;
    void SkipFlashFont();
    void ReadHeader();
    void ReadRows();
    bool ReadPalette();
    MessageOutcome SkipBackground();
    MessageOutcome ReadTabTable();
    void ReadTabRecords(int count);

    // The next `count` bytes, fewer at the end of the file. Always advances by `count`.
    std::span<const std::uint8_t> Next(std::size_t count) {
        const auto bytes = m_file.At(m_offset, count);
        m_offset += count;
        return bytes;
    }
    void Observe(const char* name, std::uint64_t start, std::uint64_t size) {
        if (m_observer != nullptr) m_observer->OnSection(name, start, size, std::min(size, m_file.Left(start)));
    }

    ByteSource& m_file;
    LoadedMessage& m_message;
    SectionObserver* m_observer;
    std::uint64_t m_offset = 0;
};

MessageOutcome MessageReader::Read() {
    if (!ReadFileHeader()) return MessageOutcome::kShortFileHeader;
    if (!ReadFlags()) return MessageOutcome::kShortFlags;
    if (const MessageOutcome type = CheckType(); type != MessageOutcome::kRead) return type;
    const tag_msg_flags& flags = *m_message.flags;
    if (flags.Has(SectionFlag::kFlashFont)) SkipFlashFont();
    ReadHeader();
    ReadRows();
    if (!flags.Has(SectionFlag::kPalette)) {
        m_message.palette = std::make_unique<tag_palete>();
        FillDefaultPalette(*m_message.palette);
    } else if (!ReadPalette()) {
        return MessageOutcome::kShortPalette;
    }
    if (flags.Has(SectionFlag::kBackground)) {
        if (const MessageOutcome end = SkipBackground(); end != MessageOutcome::kRead) return end;
    }
    return flags.Has(SectionFlag::kTabs) ? ReadTabTable() : MessageOutcome::kRead;
}

bool MessageReader::ReadFileHeader() {
    const auto bytes = Next(sizeof(tag_psos_header));
    Observe("Psos file header", 0, sizeof(tag_psos_header));
    // A truncated header has no reliable type, so it is dropped.
    if (bytes.size() != sizeof(tag_psos_header)) return false;
    m_message.file_header.reset(new tag_psos_header(ConvertPsosHeader(bytes)));
    return true;
}

bool MessageReader::ReadFlags() {
    const std::uint64_t start = m_offset;
    const auto bytes = Next(sizeof(tag_msg_flags));
    // Only a message has flags here; for other types the observer receives no section.
    if (m_message.file_header->file_type == kMessageFileType) Observe("section flags", start, sizeof(tag_msg_flags));
    m_message.flags.reset(new tag_msg_flags(ConvertMsgFlags(bytes)));
    return bytes.size() == sizeof(tag_msg_flags);
}

MessageOutcome MessageReader::CheckType() const {
    const tag_psos_header& header = *m_message.file_header;
    if (header.file_type == kMessageFileType) return MessageOutcome::kRead;
    if (IsRgbaFileType(header.file_type)) return MessageOutcome::kRgbaFile;
    return header.TypeName().empty() ? MessageOutcome::kUnsupportedType : MessageOutcome::kUnsupportedNamedType;
}

void MessageReader::SkipFlashFont() {
    const std::uint64_t start = m_offset;
    const auto header = Next(kFlashHeaderSize);
    const auto size_at = [&](std::size_t offset) {
        return BigEndianCursor(header.subspan(std::min(offset, header.size()))).U32();
    };
    m_offset +=
        std::uint64_t{size_at(kFlashEncodingSizeOffset)} + size_at(kFlashWordTableSizeOffset) + kFlashDirectorySize;
    Observe("flash font", start, m_offset - start);
    m_message.flash_font = true;
}

void MessageReader::ReadHeader() {
    const std::uint64_t start = m_offset;
    m_message.header.reset(
        new tag_msg_header(ConvertMsgHeader(Next(sizeof(tag_msg_header)), m_message.flags->LineOffset())));
    Observe("message header", start, sizeof(tag_msg_header));
}

void MessageReader::ReadRows() {
    const int count = m_message.header->RowCount();
    m_message.rows.reset(static_cast<tag_msg_row*>(std::calloc(static_cast<std::size_t>(count), sizeof(tag_msg_row))));
    if (!m_message.rows) throw std::bad_alloc();
    const std::uint64_t start = m_offset;
    int y_offset = m_message.flags->LineOffset();
    for (int r = 0; r < count; ++r) {
        const auto bytes = m_file.At(m_offset, sizeof(tag_msg_row));
        if (bytes.empty()) {  // all further rows read as zeros, which they already contain
            m_offset += static_cast<std::uint64_t>(count - r) * sizeof(RowHead);
            y_offset = 0;
            break;
        }
        tag_msg_row& row = m_message.rows[static_cast<std::size_t>(r)];
        m_offset += ConvertRow(bytes, row);
        y_offset = std::min(y_offset, row.Y());
    }
    Observe("rows", start, m_offset - start);
    // Without a correction the loop is skipped, so that the pages of rows beyond the end of the file stay untouched.
    for (int r = 0; y_offset != 0 && r < count; ++r) {
        tag_msg_row& row = m_message.rows[static_cast<std::size_t>(r)];
        row.SetY(row.Y() - y_offset);
    }
    m_message.y_offset = y_offset;
}

bool MessageReader::ReadPalette() {
    const std::uint64_t start = m_offset;
    m_message.palette = std::make_unique_for_overwrite<tag_palete>();
    tag_palete& palette = *m_message.palette;
    BigEndianCursor head(Next(4));
    palette.palette_lead = std::bit_cast<std::uint16_t>(head.Bytes<2>());
    palette.palette_words = head.U16();
    const std::size_t size = std::min<std::size_t>(palette.palette_words, kMaxPaletteWords) * 2;
    const auto entries = Next(size);
    Observe("palette", start, 4 + size);
    if (size == 0 || entries.size() != size) {
        palette = {};
        return false;
    }
    // The entries after a shorter section are zero, which is black.
    if (size < sizeof palette.colour_sets) std::memset(palette.colour_sets, 0, sizeof palette.colour_sets);
    std::memcpy(palette.colour_sets, entries.data(), size);
    SwapLongs({&palette.colour_sets[0][0], kColourSets * kSetEntries});
    return true;
}

MessageOutcome MessageReader::SkipBackground() {
    const std::uint64_t start = m_offset;
    const std::uint16_t tag = BigEndianCursor(Next(2)).U16();
    const std::uint64_t words = BackgroundWords(tag);
    Observe("background", start, 2 + words * 2);
    if (words == 0) return MessageOutcome::kUnknownBackground;
    const bool whole = m_file.Left(m_offset) >= words * 2;
    m_offset += words * 2;
    return whole ? MessageOutcome::kRead : MessageOutcome::kShortBackground;
}

MessageOutcome MessageReader::ReadTabTable() {
    const std::uint64_t start = m_offset;
    BigEndianCursor head(Next(6));
    const std::uint16_t version = head.U16();  // 0
    const std::uint16_t words = head.U16();    // 2; the word at 4 is unread
    const int count = words * 2 / kTabRecordSize;
    Observe("tab table", start, 6 + static_cast<std::uint64_t>(count) * kTabRecordSize);
    if (version > 2) return MessageOutcome::kTabVersionAbove2;
    if (version < 2) return MessageOutcome::kTabVersionBelow2;
    if (count > kMaxTabs) return MessageOutcome::kTooManyTabs;
    if (count > 0) ReadTabRecords(count);
    return MessageOutcome::kRead;
}

void MessageReader::ReadTabRecords(int count) {
    m_message.tabs = std::make_unique<tag_tab_field[]>(static_cast<std::size_t>(count));
    std::size_t kept = 0;
    for (int i = 0; i < count; ++i) {
        // A record beyond the end of the file reads as zeros. Its ends are equal, so it is rejected.
        tag_tab_field tab = ConvertTabRecord(Next(kTabRecordSize));
        if (tab.Row() >= m_message.header->RowCount()) {
            m_message.bad_tab_row = true;
            continue;
        }
        if (tab.tab_start >= tab.tab_end) {
            m_message.bad_tab_field = true;
            continue;
        }
        const tag_msg_row& row = m_message.rows[static_cast<std::size_t>(tab.Row())];
        tab.tab_start = static_cast<std::uint16_t>(tab.tab_start + kXOffset);
        tab.tab_end = static_cast<std::uint16_t>(tab.tab_end + kXOffset);
        tab.tab_top = static_cast<std::uint16_t>(row.Y());
        tab.tab_bottom = static_cast<std::uint16_t>(row.Y() + row.Bottom());
        m_message.tabs[kept++] = tab;
    }
    m_message.tab_count = static_cast<int>(kept);
}

}  // namespace

MessageOutcome LoadMessage(ByteSource& file, LoadedMessage& message, SectionObserver* observer) {
    return MessageReader(file, message, observer).Read();
}

MessageOutcome LoadMessage(std::span<const std::uint8_t> file, LoadedMessage& message, SectionObserver* observer) {
    ByteSource source(file);
    return LoadMessage(source, message, observer);
}

}  // namespace zel::message
