#include "files/message_reader.h"

#include <algorithm>

#include "files/message_fields.h"

namespace zel::files {
namespace {

constexpr std::uint32_t kMessageType = 702;

template <class Range>
bool AllEqual(const Range& values) {
    return std::ranges::adjacent_find(values, std::ranges::not_equal_to{}) == values.end();
}

// Reads the sections in file order. A function that returns false ends the reading there.
class MessageSections {
  public:
    explicit MessageSections(std::span<const std::uint8_t> file) noexcept : m_size(file.size()), m_cursor(file) {}

    MessageFile Read();

  private:
    void ReadFlashFont();
    void ReadHeader();
    void ReadRows();
    void ReadRow();
    bool ReadSections(unsigned flags);
    bool ReadPalette();
    bool ReadBackground();
    void ReadTabs();

    template <class Fields, class... Values>
    void Next(Values&... values) {
        ReadRecord<Fields>(m_cursor.Next(Fields::kSize), values...);
    }

    std::size_t m_size;
    FileCursor m_cursor;
    MessageFile m_message;
    unsigned m_last_row = 0;
};

MessageFile MessageSections::Read() {
    unsigned flags = 0;
    Next<PsosHeaderFields>(m_message.psos);
    Next<MessageFlagsFields>(flags, m_message.more_flags);
    m_message.pal = (flags & kPalFlag) != 0;
    if ((flags & kFlashFlag) != 0 && !m_cursor.AtEnd()) ReadFlashFont();
    ReadHeader();
    ReadRows();
    ReadSections(flags);
    const auto tail = m_cursor.Rest();
    m_message.tail.assign(tail.begin(), tail.end());
    SetUnlessComputed(m_message.section_flags, flags, ComputedSectionFlags(m_message));
    if (m_cursor.PassedEnd()) m_message.size = m_size;
    return std::move(m_message);
}

void MessageSections::ReadFlashFont() {
    FlashFont& flash = m_message.flash_font.emplace();
    const auto add = [&](std::uint64_t count) {
        const auto bytes = m_cursor.Next(count);
        flash.content.insert(flash.content.end(), bytes.begin(), bytes.end());
        return bytes.size();
    };
    add(8 + 98);
    Next<NumberFields<4>>(flash.encoding_size);
    add(120 - 102);
    Next<NumberFields<4>>(flash.word_table_size);
    add(FlashFont::kFixedContent - (8 + 98) - (120 - 102));
    const std::uint64_t size = std::uint64_t{flash.encoding_size} + flash.word_table_size;
    const std::uint64_t present = add(size);
    if (!AllEqual(flash.content)) return;
    flash.fill = flash.content.front();
    flash.content.clear();
    SetUnlessComputed(flash.data_size, present, size);
}

void MessageSections::ReadHeader() {
    Next<MessageHeaderFields>(m_message.header, m_last_row);
}

void MessageSections::ReadRows() {
    for (unsigned r = 0; r <= m_last_row && !m_cursor.AtEnd(); ++r) ReadRow();
    const unsigned computed = static_cast<std::uint16_t>(m_message.rows.size() - 1);
    SetUnlessComputed(m_message.header.last_row, m_last_row, computed);
    if (m_message.rows.empty()) m_message.header.last_row = m_last_row;  // no number of rows gives it
}

void MessageSections::ReadRow() {
    RowText& row = m_message.rows.emplace_back();
    unsigned count = 0;
    Next<RowHeadFields>(row, count);
    const unsigned records = row.row_empty ? 0 : count;
    row.cells.reserve(std::min<std::size_t>(records, m_cursor.Rest().size() / CharCellFields::kSize + 1));
    for (unsigned k = 0; k < records && !m_cursor.AtEnd(); ++k) Next<CharCellFields>(row.cells.emplace_back());
    SetUnlessComputed(row.char_count, count, static_cast<unsigned>(row.cells.size()));
}

bool MessageSections::ReadSections(unsigned flags) {
    const auto present = [&](unsigned flag) { return (flags & flag) != 0; };
    if (present(kPaletteFlag) && (m_cursor.AtEnd() || !ReadPalette())) return false;
    if (present(kBackgroundFlag) && (m_cursor.AtEnd() || !ReadBackground())) return false;
    if (present(kTabFlag) && !m_cursor.AtEnd()) ReadTabs();
    return true;
}

bool MessageSections::ReadPalette() {
    PaletteBlock& palette = m_message.palette.emplace();
    unsigned words = 0;
    Next<PaletteHeadFields>(palette, words);
    const unsigned taken = std::min(words, kMostPaletteWords);
    for (unsigned k = 0; k < taken / 2 && !m_cursor.AtEnd(); ++k) Next<NumberFields<4>>(palette.entries.emplace_back());
    if (taken % 2 != 0 && !m_cursor.AtEnd()) Next<NumberFields<2>>(palette.half_entry.emplace());
    const std::size_t described = 2 * palette.entries.size() + (palette.half_entry ? 1 : 0);
    SetUnlessComputed(palette.palette_words, words, static_cast<unsigned>(described));
    return taken > 0 && described == taken && !m_cursor.PassedEnd();
}

bool MessageSections::ReadBackground() {
    BackgroundBlock& background = m_message.background.emplace();
    Next<NumberFields<2>>(background.tag);
    const std::size_t words = BackgroundWords(background.tag);
    for (std::size_t k = 0; k < words && !m_cursor.AtEnd(); ++k) {
        Next<NumberFields<2>>(background.content.emplace_back());
    }
    const std::size_t described = background.content.size();
    if (AllEqual(background.content)) {
        background.value = background.content.empty() ? 0 : background.content.front();
        background.content.clear();
        SetUnlessComputed(background.words, described, words);
    }
    return words > 0 && described == words && !m_cursor.PassedEnd();
}

void MessageSections::ReadTabs() {
    TabTable& tabs = m_message.tabs.emplace();
    unsigned words = 0;
    Next<TabHeadFields>(tabs, words);
    const unsigned records = words / 13;
    const bool readable = tabs.tab_version == 2 && records <= kMostTabFields;
    for (unsigned k = 0; readable && k < records && !m_cursor.AtEnd(); ++k) {
        Next<TabFieldFields>(tabs.fields.emplace_back());
    }
    SetUnlessComputed(tabs.tab_words, words, static_cast<unsigned>(13 * tabs.fields.size()));
}

}  // namespace

Description<MessageFile> ReadMessage(std::span<const std::uint8_t> file) {
    Description<MessageFile> result;
    ReadRecord<NumberFields<4>>(file, result.file_type);
    if (file.size() < PsosHeaderFields::kSize + MessageFlagsFields::kSize) {
        result.reason = NoDescription::kShort;
    } else if (result.file_type != kMessageType) {
        result.reason = NoDescription::kOtherType;
    } else {
        result.file = MessageSections(file).Read();
    }
    return result;
}

}  // namespace zel::files
