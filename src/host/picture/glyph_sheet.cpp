#include "host/picture/glyph_sheet.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "host/glyph_bitmaps.h"
#include "module/contract/zel_font.h"

namespace zel::picture {

namespace {

constexpr int kColumns = 16;
constexpr int kRows = kDirectoryEntries / kColumns;
constexpr int kColourSet = 7;  ///< light grey with a grey edge in the default palette.

constexpr int kGap = 4;         ///< between cells, and around them.
constexpr int kLabelScale = 2;  ///< pixels of a label's dot.
constexpr int kCodeHeight = 5 * kLabelScale + kGap;
constexpr int kLabelWidth = 7 * kLabelScale;  ///< two digits of 3 dots and a dot between them.
constexpr int kCheck = 6;                     ///< side of a square of the checkerboard.

constexpr Rgba kGround{28, 31, 37, 255};
constexpr Rgba kEmptyCell{42, 46, 54, 255};
constexpr Rgba kBrokenCell{170, 40, 40, 255};
/// Black, white and the grey of an edge all stand out.
constexpr Rgba kChecks[] = {{66, 70, 78, 255}, {86, 90, 98, 255}};
constexpr Rgba kLabel{205, 210, 218, 255};

/// Hexadecimal digits, 3 dots wide and 5 high: 3 bits a row from the top row down, the leftmost dot first.
constexpr std::array<std::uint16_t, 16> kDigits = {
    0b111'101'101'101'111, 0b010'110'010'010'111, 0b111'001'111'100'111, 0b111'001'111'001'111,
    0b101'101'111'001'001, 0b111'100'111'001'111, 0b111'100'111'101'111, 0b111'001'001'010'010,
    0b111'101'111'101'111, 0b111'101'111'001'111, 0b010'101'111'101'101, 0b110'101'110'101'110,
    0b111'100'100'100'111, 0b110'101'101'101'110, 0b111'100'110'100'111, 0b111'100'110'100'100,
};

struct Cell {
    int width = 0;  ///< of what is shown of the glyph
    int height = 0;
    std::vector<std::uint8_t> bgra;  ///< as BuildMFData leaves it: bottom row first
    bool broken = false;
};
using Cells = std::vector<Cell>;

/// The upper left part of a glyph, at most a cell large.
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
    host::GlyphBitmaps bitmaps;
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
        ++sheet.glyphs;
        if (glyph.rect.Width() > cell.width || glyph.rect.Height() > cell.height) ++sheet.cut;
    }
    sheet.failures = bitmaps.Failures();
    return cells;
}

/// Where the code's cell begins and what it measures.
struct Grid {
    int glyph_width = kLabelWidth;
    int glyph_height = kCodeHeight;

    int StepX() const noexcept { return glyph_width + kGap; }
    int StepY() const noexcept { return kCodeHeight + glyph_height + kGap; }
};

Grid GridFor(const Cells& cells) {
    Grid grid;
    for (const Cell& cell : cells) {
        grid.glyph_width = std::max(grid.glyph_width, cell.width);
        grid.glyph_height = std::max(grid.glyph_height, cell.height);
    }
    return grid;
}

/// Fills a rectangle that lies within the picture; `colour_at` is asked with places in the rectangle.
template <typename ColourAt>
void Fill(Picture& picture, int left, int top, int width, int height, ColourAt colour_at) {
    for (int y = 0; y < height; ++y) {
        auto at = (static_cast<std::size_t>(top + y) * static_cast<std::size_t>(picture.width) +
                   static_cast<std::size_t>(left)) *
                  4;
        for (int x = 0; x < width; ++x, at += 4) {
            const Rgba colour = colour_at(x, y);
            picture.rgba[at] = colour.red;
            picture.rgba[at + 1] = colour.green;
            picture.rgba[at + 2] = colour.blue;
            picture.rgba[at + 3] = colour.alpha;
        }
    }
}

void DrawLabel(Picture& picture, int left, int top, unsigned code) {
    for (const unsigned digit : {code >> 4, code & 0xF}) {
        Fill(picture, left, top, 3 * kLabelScale, 5 * kLabelScale, [digit](int x, int y) {
            const int dot = y / kLabelScale * 3 + x / kLabelScale;
            return (kDigits[digit] >> (14 - dot) & 1) != 0 ? kLabel : kGround;
        });
        left += 4 * kLabelScale;
    }
}

void DrawCell(Picture& picture, const Grid& grid, unsigned code, const Cell& cell) {
    const int left = kGap + static_cast<int>(code % kColumns) * grid.StepX();
    const int label = kGap + static_cast<int>(code / kColumns) * grid.StepY();
    const int top = label + kCodeHeight;
    DrawLabel(picture, left, label, code);
    const Rgba ground = cell.broken ? kBrokenCell : kEmptyCell;
    Fill(picture, left, top, grid.glyph_width, grid.glyph_height, [ground](int, int) { return ground; });
    Fill(picture, left, top, cell.width, cell.height,
         [](int x, int y) { return kChecks[(x / kCheck + y / kCheck) % 2]; });
    LayBitmap({picture.width, picture.height, picture.rgba}, left, top, cell.width, cell.height, cell.bgra);
}

}  // namespace

GlyphSheet DrawGlyphSheet(CZelFont& fonts) {
    GlyphSheet sheet;
    const Cells cells = FetchCells(fonts, sheet);
    const Grid grid = GridFor(cells);
    Picture& picture = sheet.picture;
    picture.width = kGap + kColumns * grid.StepX();
    picture.height = kGap + kRows * grid.StepY();
    picture.rgba.resize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) * 4);
    Fill(picture, 0, 0, picture.width, picture.height, [](int, int) { return kGround; });
    for (unsigned code = 0; code < kDirectoryEntries; ++code) DrawCell(picture, grid, code, cells[code]);
    return sheet;
}

}  // namespace zel::picture
