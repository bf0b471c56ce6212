#include "host/thumbnail/font_thumbnail.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "host/picture/composite.h"
#include "host/picture/resample.h"
#include "host/thumbnail/grounds.h"
#include "module/contract/records/palette.h"
#include "module/font/format/draw_run_codes.h"
#include "module/font/format/font_loader.h"
#include "module/font/format/measure_run_codes.h"
#include "module/font/format/stored_glyph.h"
#include "module/message/format/default_palette.h"

namespace zel::thumbnail {

namespace {

/// A square is about this wide, in pixels, with these limits to their number across.
constexpr int kCommonSquare = 40;
constexpr int kFewest = 3, kMost = 8;
/// Part of a square that a glyph may fill.
constexpr double kFilled = 0.86;
/// A larger glyph is no letter; its size comes from a file.
constexpr int kLargestGlyph = 512;
/// Light grey with a grey edge in the default palette.
constexpr int kColourSet = 7;

struct Glyph {
    /// With its alpha.
    picture::Picture picture;
    /// From the upper edge down to the baseline, in pixels.
    int ascent = 0;
};

class GlyphReader {
  public:
    GlyphReader(std::span<const std::uint8_t> file, const tag_font_memory& font) : m_file(file), m_font(font) {
        if (font.encoding_data != nullptr) m_codes = {font.encoding_data, font.font_header->encoding_size};
        tag_palete palette{};
        message::FillDefaultPalette(palette);
        for (std::size_t i = 0; i < m_colours.size(); ++i) {
            const COLORREF colour = PackColour(palette.colour_sets[kColourSet][i]);
            m_colours[i] = {static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 8),
                            static_cast<std::uint8_t>(colour >> 16)};
        }
    }

    /// @return a picture without pixels if there is no such glyph, or it is damaged or too large.
    Glyph Read(unsigned code) const {
        const tag_char_entry* const entry = m_font.Entry(code);
        if (entry == nullptr || !entry->HasGlyph()) return {};
        Glyph glyph;
        glyph.picture = entry->IsStored() ? Stored(*entry) : RunCoded(*entry);
        glyph.ascent = entry->Top() - (entry->IsStored() ? 1 : 0);
        return glyph;
    }

  private:
    static picture::Picture Empty(int width, int height) {
        const bool usable = width > 0 && height > 0 && width <= kLargestGlyph && height <= kLargestGlyph;
        return usable ? picture::ClearPicture(width, height) : picture::Picture{};
    }

    picture::Picture RunCoded(const tag_char_entry& entry) const {
        const font::RunCodeReader codes(m_codes, entry.glyph_offset);
        const font::GlyphSize size = font::MeasureRunCodes(codes);
        picture::Picture picture = Empty(size.width, size.height);
        if (picture.rgba.empty()) return picture;
        font::DrawRunCodes(
            codes, {m_colours, {}},
            {picture.rgba.data(), std::ptrdiff_t{picture.width} * 4, picture.width, picture.height, std::uint8_t{0}});
        SwapRedAndBlue(picture);
        return picture;
    }

    picture::Picture Stored(const tag_char_entry& entry) const {
        if (entry.glyph_offset >= m_file.size()) return {};
        const std::span<const std::uint8_t> record = m_file.subspan(entry.glyph_offset);
        const font::StoredGlyphHead head = font::ConvertStoredGlyphHead(record);
        if (font::CheckStoredGlyph(head, record.size()) != font::StoredGlyphFault::kNone) return {};
        picture::Picture picture = Empty(head.width, head.height);
        if (picture.rgba.empty()) return picture;
        std::ranges::copy(record.subspan(font::kStoredGlyphHeadSize, picture.rgba.size()), picture.rgba.begin());
        font::StraightenPixels(picture.rgba);
        SwapRedAndBlue(picture);
        return picture;
    }

    static void SwapRedAndBlue(picture::Picture& picture) {
        for (std::size_t at = 0; at < picture.rgba.size(); at += 4) std::swap(picture.rgba[at], picture.rgba[at + 2]);
    }

    std::span<const std::uint8_t> m_file;
    const tag_font_memory& m_font;
    std::span<const std::uint8_t> m_codes;
    std::array<font::RunColour, kSetEntries> m_colours;
};

/// Up to `most` glyphs, beginning with the code of "A" in common fonts and then in the order of their codes.
std::vector<Glyph> ReadGlyphs(const GlyphReader& reader, std::size_t most) {
    std::vector<Glyph> glyphs;
    for (unsigned i = 0; i < kDirectoryEntries && glyphs.size() < most; ++i) {
        Glyph glyph = reader.Read(('A' + i) % kDirectoryEntries);
        if (!glyph.picture.rgba.empty()) glyphs.push_back(std::move(glyph));
    }
    return glyphs;
}

/// One scale for all glyphs, in which they fill their squares, with a common baseline where that is possible.
class Squares {
  public:
    Squares(const std::vector<Glyph>& glyphs, double square) : m_square(square) {
        int above = 0, below = 0, highest = 0;
        for (const Glyph& glyph : glyphs) {
            above = std::max(above, glyph.ascent);
            below = std::max(below, glyph.picture.height - glyph.ascent);
            highest = std::max(highest, glyph.picture.height);
        }
        m_has_baseline = above + below <= highest * 3 / 2;
        const int height = m_has_baseline ? above + below : highest;
        m_scale = std::min(square * kFilled / height, 1.0);
        m_baseline = (square - height * m_scale) / 2 + above * m_scale;
    }

    /// @param left, top  of the square.
    void Draw(picture::PixelView view, double left, double top, const Glyph& glyph) const {
        const double scale = std::min(m_scale, m_square * kFilled / glyph.picture.width);
        const double width = std::max(glyph.picture.width * scale, 1.0);
        const double height = std::max(glyph.picture.height * scale, 1.0);
        const double y = m_has_baseline ? top + m_baseline - glyph.ascent * scale : top + (m_square - height) / 2;
        const picture::Picture small = picture::Stretched(glyph.picture, static_cast<int>(std::lround(width)),
                                                          static_cast<int>(std::lround(height)));
        picture::BlendPixels(view, static_cast<int>(std::lround(left + (m_square - width) / 2)),
                             static_cast<int>(std::lround(y)), small.View());
    }

  private:
    double m_square;
    double m_scale = 1;
    double m_baseline = 0;
    bool m_has_baseline = false;
};

}  // namespace

picture::Picture FontThumbnail(std::span<const std::uint8_t> file, int side) {
    font::LoadedFont font;
    LoadFont(file, font);
    picture::Picture sheet = picture::ClearPicture(side, side);
    picture::Fill(sheet.View(), kGround);
    if (font.slot.font_header == nullptr || font.slot.char_directory == nullptr) return sheet;

    const int most = std::clamp(side / kCommonSquare, kFewest, kMost);
    const std::vector<Glyph> glyphs =
        ReadGlyphs(GlyphReader(file, font.slot), static_cast<std::size_t>(most) * static_cast<std::size_t>(most));
    if (glyphs.empty()) return sheet;
    const int across = std::min(most, static_cast<int>(std::ceil(std::sqrt(static_cast<double>(glyphs.size())))));
    const int down = (static_cast<int>(glyphs.size()) + across - 1) / across;
    const double square = static_cast<double>(side) / across;
    const double first_top = (side - down * square) / 2;
    const Squares squares(glyphs, square);
    for (int i = 0; i < static_cast<int>(glyphs.size()); ++i) {
        squares.Draw(sheet.View(), i % across * square, first_top + i / across * square,
                     glyphs[static_cast<std::size_t>(i)]);
    }
    return sheet;
}

}  // namespace zel::thumbnail
