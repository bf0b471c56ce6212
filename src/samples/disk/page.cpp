#include "samples/disk/page.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace zel::samples {
namespace {

/// The host shows a character 7 pixels to the right of its char_x.
constexpr int kHostIndent = 7;
constexpr std::size_t kMostChars = 63;

unsigned Field(int value, const char* name) {
    if (value < 0 || value > 1023) throw std::logic_error(std::string(name) + " is out of its 10 bits");
    return static_cast<unsigned>(value);
}

std::uint32_t EntryOf(std::uint32_t rgb) {
    return files::PaletteEntry(rgb >> 16 & 255, rgb >> 8 & 255, rgb & 255);
}

std::uint32_t MixRgb(std::uint32_t from, std::uint32_t to, std::uint32_t step, std::uint32_t steps) {
    std::uint32_t mixed = 0;
    for (const unsigned shift : {16U, 8U, 0U}) {
        const std::uint32_t a = from >> shift & 255, b = to >> shift & 255;
        mixed |= (a * (steps - step) + b * step) / steps << shift;
    }
    return mixed;
}

}  // namespace

int TextWidth(const DiskFont& font, std::string_view text, int tracking) {
    int width = 0;
    for (std::size_t n = 0; n < text.size(); ++n) {
        if (n > 0) width += font.Kerning(text[n - 1], text[n]) + tracking;
        width += font.Advance(text[n]);
    }
    return width;
}

Page::Page(Standard standard) : m_standard(standard) {
    m_file.psos.type_name = "MESSAGE";
    m_file.pal = standard.pal;
    m_file.header.frame_left = kSafeLeft - kHostIndent;
    m_file.header.frame_right = kSafeRight - kHostIndent;
    m_file.header.frame_top = Field(standard.lines / 10 + standard.line_offset, "frame_top");
    m_file.header.frame_bottom = Field(standard.lines - standard.lines / 10 + standard.line_offset, "frame_bottom");
}

Page& Page::Row(int baseline, const DiskFont& font) {
    files::RowText row;
    row.row_y = Field(baseline - font.baseline + m_standard.line_offset, "row_y");
    row.row_top = Field(font.RowTop(), "row_top");
    row.row_bottom = Field(font.RowBottom(), "row_bottom");
    m_file.rows.push_back(std::move(row));
    m_row_baseline = font.baseline;
    return *this;
}

Page& Page::BlankRow(int baseline, const DiskFont& font) {
    Row(baseline, font);
    m_file.rows.back().row_empty = true;
    return *this;
}

Page& Page::Text(const DiskFont& font, unsigned colour_set, int x, std::string_view text, Align align, int tracking) {
    if (m_file.rows.empty()) throw std::logic_error("a text without a row");
    files::RowText& row = m_file.rows.back();
    if (row.cells.size() + text.size() > kMostChars) throw std::logic_error("more than 63 characters in a row");
    const int width = TextWidth(font, text, tracking);
    if (align == Align::kCentre) x -= width / 2;
    if (align == Align::kRight) x -= width;

    files::CharCell cell;
    cell.char_font = Slot(font);
    cell.colour_set = colour_set;
    // Compensates the difference between the upper limits of the row and of the font, so that all baselines meet.
    cell.char_y = Field(m_row_baseline + static_cast<int>(row.row_top) - font.RowTop(), "char_y");
    for (std::size_t n = 0; n < text.size(); ++n) {
        if (n > 0) x += font.Kerning(text[n - 1], text[n]) + tracking;
        cell.place_flag = n == 0;
        cell.char_code = static_cast<unsigned char>(text[n]);
        cell.char_x = Field(x - font.left_pad - kHostIndent, "char_x");
        row.cells.push_back(cell);
        x += font.Advance(text[n]);
    }
    return *this;
}

Page& Page::Line(int baseline, const DiskFont& font, unsigned colour_set, int x, std::string_view text, Align align,
                 int tracking) {
    return Row(baseline, font).Text(font, colour_set, x, text, align, tracking);
}

unsigned Page::Slot(const DiskFont& font) {
    auto& numbers = m_file.header.font_numbers;
    const auto used = numbers.begin() + m_slots_used;
    const auto found = std::find(numbers.begin(), used, font.number);
    if (found != used) return static_cast<unsigned>(found - numbers.begin());
    if (used == numbers.end()) throw std::logic_error("more than 16 fonts in a message");
    *used = static_cast<std::uint16_t>(font.number);
    return m_slots_used++;
}

files::TabField Page::Tab(std::string_view name, int left, int right, const DiskFont& font, unsigned colour_set) {
    files::TabField field;
    // The first character of a text at `left` belongs to the field.
    field.tab_start = Field(left - font.left_pad - kHostIndent, "tab_start");
    field.tab_end = Field(right - kHostIndent, "tab_end");
    field.tab_name = name;
    field.tab_row = static_cast<unsigned>(m_file.rows.size()) - 1;
    field.tab_font = Slot(font);
    field.tab_colour = colour_set;
    return field;
}

files::MessageFile Page::Finish() {
    for (auto& row : m_file.rows) files::ChainInOrder(row);
    return m_file;
}

files::PaletteBlock MakePalette(const std::array<FaceAndEdge, 8>& sets) {
    constexpr std::uint32_t kRampEntries = 29;
    files::PaletteBlock palette;
    for (const auto& set : sets) {
        palette.entries.push_back(0x0000FE00);
        palette.entries.push_back(EntryOf(set.face));
        palette.entries.push_back(EntryOf(set.edge));
        for (std::uint32_t n = 0; n < kRampEntries; ++n) {
            palette.entries.push_back(EntryOf(MixRgb(set.edge, set.face, n, kRampEntries - 1)));
        }
    }
    return palette;
}

}  // namespace zel::samples
