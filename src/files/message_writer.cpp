#include "files/message_writer.h"

#include <algorithm>
#include <stdexcept>

#include "files/message_fields.h"

namespace zel::files {
namespace {

unsigned SectionFlags(const MessageFile& message) {
    return message.section_flags.value_or(ComputedSectionFlags(message));
}

// Appends parts of the flash font's content, or bytes of its fill.
class FlashContent {
  public:
    FlashContent(const FlashFont& flash, ByteWriter& out) noexcept : m_flash(flash), m_out(out) {}

    void Append(std::size_t count) {
        if (m_flash.content.empty()) {
            m_out.Fill(count, m_flash.fill);
            return;
        }
        const auto rest = std::span(m_flash.content).subspan(std::min(m_used, m_flash.content.size()));
        const auto part = rest.first(std::min(count, rest.size()));
        m_out.Append(part).Fill(count - part.size());
        m_used += count;
    }

  private:
    const FlashFont& m_flash;
    ByteWriter& m_out;
    std::size_t m_used = 0;
};

std::size_t FlashDataSize(const FlashFont& flash) {
    if (flash.content.empty()) {
        return flash.data_size.value_or(std::size_t{flash.encoding_size} + flash.word_table_size);
    }
    return flash.content.size() - std::min(flash.content.size(), FlashFont::kFixedContent);
}

void WriteFlashFont(const FlashFont& flash, ByteWriter& out) {
    FlashContent content(flash, out);
    content.Append(8 + 98);
    out.U32(flash.encoding_size);  // at 98 of the font header
    content.Append(120 - 102);
    out.U32(flash.word_table_size);  // at 120
    content.Append(FlashFont::kFixedContent - (8 + 98) - (120 - 102));
    content.Append(FlashDataSize(flash));
}

void WriteHeader(const MessageHeader& header, std::size_t row_count, ByteWriter& out) {
    out.Append(
        WriteRecord<MessageHeaderFields>(header, header.last_row.value_or(static_cast<unsigned>(row_count) - 1)));
}

void WritePalette(const PaletteBlock& palette, ByteWriter& out) {
    const std::size_t words = 2 * palette.entries.size() + (palette.half_entry ? 1 : 0);
    out.Append(WriteRecord<PaletteHeadFields>(palette, palette.palette_words.value_or(static_cast<unsigned>(words))));
    for (const auto entry : palette.entries) out.U32(entry);
    if (palette.half_entry) out.U16(*palette.half_entry);
}

void WriteBackground(const BackgroundBlock& background, ByteWriter& out) {
    out.U16(background.tag);
    for (const auto word : background.content) out.U16(word);
    if (!background.content.empty()) return;
    for (auto n = background.words.value_or(BackgroundWords(background.tag)); n > 0; --n) out.U16(background.value);
}

void WriteTabs(const TabTable& tabs, ByteWriter& out) {
    const auto words = static_cast<unsigned>(13 * tabs.fields.size());
    out.Append(WriteRecord<TabHeadFields>(tabs, tabs.tab_words.value_or(words)));
    for (const auto& field : tabs.fields) out.Append(WriteRecord<TabFieldFields>(field));
}

}  // namespace

unsigned ComputedSectionFlags(const MessageFile& message) {
    unsigned flags = message.pal ? kPalFlag : 0;
    if (message.palette) flags |= kPaletteFlag;
    if (message.background) flags |= kBackgroundFlag;
    if (message.tabs) flags |= kTabFlag;
    if (message.flash_font) flags |= kFlashFlag;
    return flags;
}

std::array<std::uint8_t, 8> WriteCharCell(const CharCell& cell) {
    return WriteRecord<CharCellFields>(cell);
}

std::array<std::uint8_t, 8> WriteRowHead(const RowText& row) {
    return WriteRecord<RowHeadFields>(row, row.char_count.value_or(static_cast<unsigned>(row.cells.size())));
}

Bytes WriteTabField(const TabField& field) {
    const auto record = WriteRecord<TabFieldFields>(field);
    return {record.begin(), record.end()};
}

Bytes WriteMessage(const MessageFile& message, MessageOffsets* offsets) {
    MessageOffsets at;
    ByteWriter out;
    out.Append(WriteRecord<PsosHeaderFields>(message.psos));
    at.flags = out.Size();
    out.Append(WriteRecord<MessageFlagsFields>(SectionFlags(message), message.more_flags));
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
    if (message.size) out.Cut(*message.size);
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
