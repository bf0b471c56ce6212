#include "host/picture/glyph_sheet.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>

#include "host/glyph_bitmaps.h"
#include "host/picture/composite.h"
#include "module/contract/zel_font.h"

namespace zel::picture {

namespace {

constexpr int kColumns = 16;
constexpr int kRows = kDirectoryEntries / kColumns;
/// Light grey with a grey edge in the default palette.
constexpr int kColourSet = 7;

/// Between cells, and around them.
constexpr int kGap = 4;
/// Side of a label's dot.
constexpr int kDot = 2;
constexpr int kCodeHeight = 5 * kDot + kGap;
/// Two digits of 3 dots, and a dot between them.
constexpr int kCodeWidth = 7 * kDot;
/// Side of a square of the checkerboard.
constexpr int kSquare = 6;

constexpr Rgba kGround{28, 31, 37, 255};
constexpr Rgba kEmptyCell{42, 46, 54, 255};
constexpr Rgba kBrokenCell{170, 40, 40, 255};
/// Colours of the checkerboard, on which black, white and the grey of an edge are visible.
constexpr Rgba kDarkSquare{66, 70, 78, 255};
constexpr Rgba kLightSquare{86, 90, 98, 255};
constexpr Rgba kCodeColour{205, 210, 218, 255};

/// Hexadecimal digits, 3 dots wide and 5 high: 3 bits a row from the top row down, the leftmost dot first.
constexpr std::array<std::uint16_t, 16> kDigits = {
    0b111'101'101'101'111, 0b010'110'010'010'111, 0b111'001'111'100'111, 0b111'001'111'001'111,
    0b101'101'111'001'001, 0b111'100'111'001'111, 0b111'100'111'101'111, 0b111'001'001'010'010,
    0b111'101'111'101'111, 0b111'101'111'001'111, 0b010'101'111'101'101, 0b110'101'110'101'110,
    0b111'100'100'100'111, 0b110'101'101'101'110, 0b111'100'110'100'111, 0b111'100'110'100'100,
};

/// Bytes of all glyphs, before they are cut to their cells: 192 of 400 x 400 pixels.
constexpr std::uint64_t kSheetBytes = std::uint64_t{128} << 20;

/// What is visible of a glyph.
struct Cell {
    int width = 0;
    int height = 0;
    /// From the upper edge down to the baseline, in pixels; more than the height for a glyph above the baseline.
    int ascent = 0;
    /// See ModuleBitmap.
    std::vector<std::uint8_t> bgra;
    bool broken = false;

    bool IsEmpty() const noexcept { return bgra.empty() && !broken; }
};
using Cells = std::vector<Cell>;

/// The distance from the upper edge of a character's glyph down to the baseline. A stored glyph is one pixel lower.
int AscentOf(const tag_font_memory& font, unsigned code) {
    const tag_char_entry* const entry = font.Entry(code);
    return entry == nullptr ? 0 : entry->Top() - (entry->IsStored() ? 1 : 0);
}

/// The upper left part of a glyph, at most of a cell's size.
Cell CellOf(const host::GlyphBitmap& glyph) {
    Cell cell;
    if (glyph.pixels.empty()) return cell;
    const auto row_bytes = static_cast<std::size_t>(glyph.rect.Width()) * 4;
    cell.width = std::min<int>(glyph.rect.Width(), kLargestGlyphCell);
    cell.height = std::min<int>(glyph.rect.Height(), kLargestGlyphCell);
    for (int row = 0; row < cell.height; ++row) {
        const auto from = static_cast<std::size_t>(glyph.rect.Height() - cell.height + row) * row_bytes;
        const auto start = glyph.pixels.begin() + static_cast<std::ptrdiff_t>(from);
        cell.bgra.insert(cell.bgra.end(), start, start + cell.width * 4);
    }
    return cell;
}

Cells FetchCells(CZelFont& fonts, GlyphSheet& sheet) {
    host::GlyphBitmaps bitmaps(kSheetBytes);
    bitmaps.SetFonts(&fonts);
    tag_CharInf info{};
    info.font_copy = fonts.m_Slots[0].font_copy;
    info.colour_set = kColourSet;
    Cells cells;
    for (unsigned code = 0; code < kDirectoryEntries; ++code) {
        const std::size_t failures = bitmaps.Failures().size();
        const host::GlyphBitmap& glyph = bitmaps.Get(info, code);
        Cell& cell = cells.emplace_back(CellOf(glyph));
        cell.broken = bitmaps.Failures().size() != failures;
        if (cell.bgra.empty()) continue;
        cell.ascent = AscentOf(*info.font_copy, code);
        ++sheet.glyphs;
        if (glyph.rect.Width() > cell.width || glyph.rect.Height() > cell.height) ++sheet.cut;
        bitmaps.Drop();
    }
    sheet.failures = bitmaps.Failures();
    return cells;
}

/// Positions and sizes of the cells.
struct Grid {
    int glyph_width = kCodeWidth;
    int glyph_height = kCodeHeight;
    /// From the upper edge of a cell; if absent, the glyphs are at that edge.
    std::optional<int> baseline;
    /// The position of each row of codes; none for a row without glyphs, which is left out.
    std::array<std::optional<int>, kRows> rows{};
    int row_count = 0;

    int StepX() const noexcept { return glyph_width + kGap; }
    int StepY() const noexcept { return kCodeHeight + glyph_height + kGap; }
    int Below(const Cell& cell) const noexcept { return baseline ? *baseline - cell.ascent : 0; }
};

/// Aligns the glyphs on a common baseline, unless this makes the cells too high: the distances come from a file.
void AlignGlyphs(const Cells& cells, Grid& grid) {
    int above = 0, below = 0, highest = 0;
    for (const Cell& cell : cells) {
        if (cell.bgra.empty()) continue;
        above = std::max(above, cell.ascent);
        below = std::max(below, cell.height - cell.ascent);
        highest = std::max(highest, cell.height);
    }
    if (above + below <= kLargestGlyphCell) grid.baseline = above;
    grid.glyph_height = std::max(grid.glyph_height, grid.baseline ? above + below : highest);
}

/// A font without glyphs has all rows, all of them empty.
void PlaceRows(const Cells& cells, Grid& grid) {
    const bool none = std::ranges::all_of(cells, &Cell::IsEmpty);
    for (int row = 0; row < kRows; ++row) {
        const auto first = cells.begin() + row * kColumns;
        if (none || !std::all_of(first, first + kColumns, std::mem_fn(&Cell::IsEmpty)))
            grid.rows[static_cast<std::size_t>(row)] = grid.row_count++;
    }
}

Grid GridFor(const Cells& cells) {
    Grid grid;
    for (const Cell& cell : cells) grid.glyph_width = std::max(grid.glyph_width, cell.width);
    AlignGlyphs(cells, grid);
    PlaceRows(cells, grid);
    return grid;
}

PixelBox BoxAt(int left, int top, int width, int height) noexcept {
    return {left, top, left + width, top + height};
}

void DrawDigit(PixelView page, int left, int top, unsigned digit) {
    for (int dot = 0; dot < 15; ++dot) {
        if ((kDigits[digit] >> (14 - dot) & 1) == 0) continue;
        Fill(page.Part(BoxAt(left + dot % 3 * kDot, top + dot / 3 * kDot, kDot, kDot)), kCodeColour);
    }
}

void DrawCell(PixelView page, const Grid& grid, unsigned code, const Cell& cell) {
    const std::optional<int> row = grid.rows[code / kColumns];
    if (!row) return;
    const int left = kGap + static_cast<int>(code % kColumns) * grid.StepX();
    const int label = kGap + *row * grid.StepY();
    const int top = label + kCodeHeight;
    DrawDigit(page, left, label, code >> 4);
    DrawDigit(page, left + 4 * kDot, label, code & 0xF);
    Fill(page.Part(BoxAt(left, top, grid.glyph_width, grid.glyph_height)), cell.broken ? kBrokenCell : kEmptyCell);
    if (cell.bgra.empty()) return;
    const int glyph_top = top + grid.Below(cell);
    FillCheckerboard(page.Part(BoxAt(left, glyph_top, cell.width, cell.height)), kSquare, kDarkSquare, kLightSquare);
    BlendBitmap(page, left, glyph_top, {cell.width, cell.height, cell.bgra});
}

}  // namespace

GlyphSheet DrawGlyphSheet(CZelFont& fonts) {
    GlyphSheet sheet;
    const Cells cells = FetchCells(fonts, sheet);
    const Grid grid = GridFor(cells);
    sheet.picture = ClearPicture(kGap + kColumns * grid.StepX(), kGap + grid.row_count * grid.StepY());
    const PixelView page = sheet.picture.View();
    Fill(page, kGround);
    for (unsigned code = 0; code < kDirectoryEntries; ++code) DrawCell(page, grid, code, cells[code]);
    return sheet;
}

}  // namespace zel::picture
