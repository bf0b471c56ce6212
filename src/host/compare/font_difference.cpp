#include "host/compare/font_difference.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "base/utf8.h"
#include "host/compare/font_contents.h"
#include "host/compare/picture_difference.h"
#include "host/picture/composite.h"

namespace zel::compare {

namespace {

using Json = nlohmann::ordered_json;
using picture::Picture;
using picture::PixelBox;

/// Largest side of a glyph in the picture, of which the upper left part is shown, and most glyphs in it.
constexpr int kLargestCell = 256;
constexpr std::size_t kMostCells = 192;
constexpr int kGap = 6;
constexpr picture::Rgba kPage{46, 50, 58, 255};
constexpr picture::Rgba kCell{16, 16, 20, 255};

/// A glyph that differs, from both fonts.
struct Cell {
    Picture a, b;
    PictureDifference difference;
};

/// The upper left part of a glyph's pixels that a cell shows.
Picture Cut(const Picture& glyph) {
    Picture cut = picture::ClearPicture(std::min(glyph.width, kLargestCell), std::min(glyph.height, kLargestCell));
    picture::BlendPixels(cut.View(), 0, 0, glyph.View().Part({0, 0, cut.width, cut.height}));
    return cut;
}

class FontComparison {
  public:
    FontComparison(FontContents& a, FontContents& b, bool with_picture)
        : m_a(a), m_b(b), m_with_picture(with_picture) {}

    FontDifference Take() {
        Header();
        Blocks();
        for (int code = 0; code < kDirectoryEntries; ++code) Glyph(code);
        if (!m_cells.empty()) m_result.picture = Page();
        return std::move(m_result);
    }

  private:
    void Add(const char* part, std::optional<int> index, const char* property, Json a, Json b) {
        if (a != b)
            m_result.differences.push_back({part, property, {index, {}, std::move(a)}, {index, {}, std::move(b)}});
    }
    void Header();
    void Blocks();
    void Block(const char* name, std::span<const std::uint8_t> a, std::span<const std::uint8_t> b);
    void Glyph(int code);
    void Pixels(int code, const FontGlyph& a, const FontGlyph& b);
    void AddCell(const Picture& a, const Picture& b);
    Picture Page() const;

    FontContents& m_a;
    FontContents& m_b;
    const bool m_with_picture;
    FontDifference m_result;
    std::vector<Cell> m_cells;
};

void FontComparison::Header() {
    const tag_font_header& a = *m_a.Slot().font_header;
    const tag_font_header& b = *m_b.Slot().font_header;
    const auto add = [&](const char* property, Json value_a, Json value_b) {
        Add("header", {}, property, std::move(value_a), std::move(value_b));
    };
    add("name", base::Utf8FromLatin1(a.Name()), base::Utf8FromLatin1(b.Name()));
    add("id", base::Utf8FromLatin1(a.IdText()), base::Utf8FromLatin1(b.IdText()));
    add("height", int{a.font_height}, int{b.font_height});
    add("row top offset", int{a.row_top_offset}, int{b.row_top_offset});
    add("row inset", int{a.row_inset}, int{b.row_inset});
    add("edge type", a.EdgeType(), b.EdgeType());
    add("edge direction", a.EdgeDirection(), b.EdgeDirection());
    add("edge size", int{a.edge_size}, int{b.edge_size});
    add("flags", int{a.font_flags}, int{b.font_flags});
}

void FontComparison::Block(const char* name, std::span<const std::uint8_t> a, std::span<const std::uint8_t> b) {
    if (std::ranges::equal(a, b)) return;
    const auto value = [](std::span<const std::uint8_t> block) { return std::to_string(block.size()) + " bytes"; };
    m_result.differences.push_back({"block", name, {{}, {}, value(a)}, {{}, {}, value(b)}});
}

void FontComparison::Blocks() {
    const tag_font_memory &a = m_a.Slot(), &b = m_b.Slot();
    const auto block = [](const void* bytes, int size) {
        return bytes == nullptr || size <= 0
                   ? std::span<const std::uint8_t>()
                   : std::span(static_cast<const std::uint8_t*>(bytes), static_cast<std::size_t>(size));
    };
    Block("auxiliary block", block(a.aux_block, a.font_header->aux_block_size),
          block(b.aux_block, b.font_header->aux_block_size));
    Block("word table", block(a.word_table, a.font_header->WordTableBytes()),
          block(b.word_table, b.font_header->WordTableBytes()));
    constexpr int kTable = font::kCharTableSize;
    Block("character table a", block(a.char_table_a, kTable), block(b.char_table_a, kTable));
    Block("character table b", block(a.char_table_b, kTable), block(b.char_table_b, kTable));
    const auto sample = [&](const tag_graphic_rectangle& rectangle) {
        return block(rectangle.data, std::max(0, rectangle.width * std::max<int>(rectangle.height, 0)));
    };
    Block("first sample", sample(a.sample_a), sample(b.sample_a));
    Block("second sample", sample(a.sample_b), sample(b.sample_b));
}

void FontComparison::Glyph(int code) {
    const FontGlyph a = m_a.Glyph(code), b = m_b.Glyph(code);
    if (!a.IsThere() && !b.IsThere()) return;
    if (a.IsThere() != b.IsThere()) {
        const FontGlyph& there = a.IsThere() ? a : b;
        Difference difference{"glyph", "presence", {}, {}};
        DifferenceSide side{code, {}, there.kind, {}};
        (a.IsThere() ? difference.a : difference.b) = std::move(side);
        m_result.differences.push_back(std::move(difference));
        if (m_with_picture) AddCell(m_a.Draw(a), m_b.Draw(b));
        return;
    }
    Add("glyph", code, "kind", a.kind, b.kind);
    Add("glyph", code, "top", a.top, b.top);
    Add("glyph", code, "metric", a.metric, b.metric);
    Add("glyph", code, "width", a.width, b.width);
    Add("glyph", code, "height", a.height, b.height);
    Add("glyph", code, "flag", a.flag, b.flag);
    const bool same_form = std::string_view(a.kind) == b.kind && a.width == b.width && a.height == b.height;
    if (same_form && m_a.HasSameBytes(a, m_b, b)) return;
    Pixels(code, a, b);
}

void FontComparison::Pixels(int code, const FontGlyph& a, const FontGlyph& b) {
    const auto add = [&](const char* property, Json value_a, Json value_b) {
        m_result.differences.push_back(
            {"glyph", property, {code, {}, std::move(value_a)}, {code, {}, std::move(value_b)}});
    };
    const bool same_form = std::string_view(a.kind) == b.kind && a.width == b.width && a.height == b.height;
    // The numbers of codes, or of bytes of the pixels.
    const auto size = [](const FontGlyph& glyph) { return glyph.IsStored() ? glyph.size : glyph.codes.size() / 4; };
    if (!a.IsDrawn() || !b.IsDrawn()) {
        if (same_form) add("large glyph", size(a), size(b));
        return;
    }
    const Picture drawn_a = m_a.Draw(a), drawn_b = m_b.Draw(b);
    const PictureDifference difference = ComparePictures(&drawn_a, &drawn_b);
    if (difference.pixels != 0) {
        add("pixels", difference.pixels, difference.pixels);
    } else if (same_form) {
        add(a.IsStored() ? "stored bytes" : "codes", size(a), size(b));
    }
    if (m_with_picture && !difference.IsNone()) AddCell(drawn_a, drawn_b);
}

void FontComparison::AddCell(const Picture& a, const Picture& b) {
    if (m_cells.size() >= kMostCells) return;
    Cell cell{Cut(a), Cut(b), {}};
    cell.difference = ComparePictures(&cell.a, &cell.b);
    m_cells.push_back(std::move(cell));
}

/// As many triples in a line as make the page about as wide as high.
Picture FontComparison::Page() const {
    int width = 1, height = 1;
    for (const Cell& cell : m_cells) {
        width = std::max({width, cell.a.width, cell.b.width});
        height = std::max({height, cell.a.height, cell.b.height});
    }
    const int triple = 3 * (width + 2) + kGap;
    const auto count = static_cast<int>(m_cells.size());
    int columns = 1;
    while (columns < count && columns * triple < (count + columns - 1) / columns * (height + kGap)) ++columns;
    const int lines = (count + columns - 1) / columns;
    Picture page = picture::ClearPicture(kGap + columns * triple, kGap + lines * (height + kGap));
    const picture::PixelView view = page.View();
    picture::Fill(view, kPage);
    for (int i = 0; i < count; ++i) {
        const Cell& cell = m_cells[static_cast<std::size_t>(i)];
        const Picture marked = MarkedPicture(&cell.a, &cell.b, {});
        int x = kGap + i % columns * triple;
        const int y = kGap + i / columns * (height + kGap);
        for (const Picture* part : {&cell.a, &cell.b, &marked}) {
            picture::Fill(view.Part({x, y, x + width, y + height}), kCell);
            picture::BlendPixels(view, x, y, part->View());
            x += width + 2;
        }
    }
    return page;
}

}  // namespace

std::optional<FontDifference> CompareFonts(message::FileBytes& a, message::FileBytes& b, bool with_picture) {
    FontContents font_a(a), font_b(b);
    if (!font_a.IsRead() || !font_b.IsRead()) return std::nullopt;
    return FontComparison(font_a, font_b, with_picture).Take();
}

}  // namespace zel::compare
