#include "host/fontkit/true_type.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "base/utf8.h"
#include "host/fontkit/atlas.h"
#include "host/fontkit/glyph_outline.h"
#include "host/fontkit/kit_png.h"
#include "host/fontkit/sfnt_tables.h"

namespace zel::fontkit {

namespace {

/// Points of one glyph, and of all glyphs of a font, at most. The first bound is the format's.
constexpr int kMostGlyphPoints = 65535, kMostContours = 32767;
constexpr std::int64_t kMostPoints = std::int64_t{1} << 20;
constexpr unsigned kNoBreakSpace = 0xA0, kSpace = 0x20;

/// A layer of a base glyph, bottom first.
struct ColourLayer {
    std::size_t glyph = 0;
    unsigned palette_entry = 0;
};

class TrueTypeBuilder {
  public:
    TrueTypeBuilder(const FontArt& art, const FontFileNames& names, PixelAspect aspect)
        : m_art(art), m_names(names), m_scale(ScaleOf(art, aspect)) {
        m_glyphs.push_back(MissingGlyph(m_scale));
    }

    TrueTypeFile Layered() {
        AddGlyphs(false);
        // The glyphs of the layers follow all others.
        for (std::size_t index = 0; index < m_own.size(); ++index) AddLayers(index);
        SfntTables tables = Tables("");
        if (!m_layers.empty()) {
            tables["COLR"] = ColourTable();
            tables["CPAL"] = PaletteTable();
        }
        return {SfntFile(tables), std::move(m_lost)};
    }

    TrueTypeFile Pixels(unsigned set) {
        AddGlyphs(true);
        SfntTables tables = Tables(" Pixels");
        tables["sbix"] = StrikeTable(set);
        return {SfntFile(tables), std::move(m_lost)};
    }

  private:
    /// A glyph of the font's own, with its number in the file.
    struct OwnGlyph {
        const GlyphArt* art;
        std::size_t number;
    };

    void AddGlyphs(bool anchored) {
        for (const GlyphArt& art : m_art.glyphs) {
            SfntGlyph glyph;
            glyph.advance = std::min(m_scale.X(art.advance), 65535);
            if (!art.layers.empty()) {
                std::optional<GlyphOutline> outline = Outline(art, art.layers.front());
                if (!outline) {
                    m_lost.push_back({art.code, "its outline has too many points"});
                    continue;
                }
                glyph.outline = std::move(*outline);
                // A bitmap's place is measured from the lower left corner of the outline: a contour of one point, which
                // draws nothing, puts that corner on the bitmap's.
                const picture::PixelBox box = art.VisibleBox();
                if (anchored)
                    glyph.outline.contours.push_back({{m_scale.X(box.left), m_scale.Y(art.top - box.bottom)}});
            }
            m_characters[kPrivateUse + art.code] = m_glyphs.size();
            if (!base::IsControl(art.code)) m_characters[art.code] = m_glyphs.size();
            m_own.push_back({&art, m_glyphs.size()});
            m_glyphs.push_back(std::move(glyph));
        }
        if (const auto space = m_characters.find(kSpace); space != m_characters.end())
            m_characters.try_emplace(kNoBreakSpace, space->second);
    }

    /// @return empty if the outline has too many points.
    std::optional<GlyphOutline> Outline(const GlyphArt& art, const ArtLayer& layer) {
        GlyphOutline outline = OutlineOf(layer.coverage, art.top, m_scale);
        const int points = outline.PointCount();
        if (points >= kMostGlyphPoints || outline.contours.size() >= std::size_t{kMostContours}) return std::nullopt;
        m_points += points;
        if (m_points > kMostPoints) return std::nullopt;
        return outline;
    }

    void AddLayers(std::size_t index) {
        const auto [art, number] = m_own[index];
        if (art->kind != ArtKind::kRunCoded) return;
        std::vector<ColourLayer> layers{{number, PaletteEntryOf(art->layers.front().colour_index)}};
        for (std::size_t layer = 1; layer < art->layers.size(); ++layer) {
            std::optional<GlyphOutline> outline = Outline(*art, art->layers[layer]);
            if (!outline) {
                m_lost.push_back({art->code, "the outlines of its colours have too many points"});
                break;
            }
            if (outline->contours.empty()) continue;
            layers.push_back({m_glyphs.size(), PaletteEntryOf(art->layers[layer].colour_index)});
            m_glyphs.push_back({std::move(*outline), m_glyphs[number].advance});
        }
        m_layers[number] = std::move(layers);
    }

    /// Face and edge have fixed entries, so that another program can replace them in every font alike.
    unsigned PaletteEntryOf(unsigned colour_index) {
        const auto found = std::ranges::find(m_palette, colour_index);
        const auto entry = static_cast<unsigned>(found - m_palette.begin());
        if (found == m_palette.end()) m_palette.push_back(colour_index);
        return entry;
    }

    /// @param kind  the end of the family's name.
    SfntTables Tables(const char* kind) {
        SfntFont font;
        font.family = (m_art.name.empty() ? "Font " + m_names.stem : m_art.name) + m_names.family_end + kind;
        font.identity = font.family + " " + m_names.stem;
        font.scale = m_scale;
        font.ascender = m_scale.Y(m_art.base);
        font.descender = -m_scale.Y(std::max(m_art.line_height - m_art.base, 0));
        font.characters = &m_characters;
        font.glyphs = &m_glyphs;
        return BasicTables(font);
    }

    SfntTable ColourTable() const {
        constexpr unsigned kHeader = 14, kBaseRecord = 6;
        SfntTable records, layers;
        unsigned first = 0;
        for (const auto& [glyph, own] : m_layers) {
            records.U16(static_cast<unsigned>(glyph)).U16(first).U16(static_cast<unsigned>(own.size()));
            for (const ColourLayer& layer : own) {
                layers.U16(static_cast<unsigned>(layer.glyph)).U16(layer.palette_entry);
                ++first;
            }
        }
        const auto count = static_cast<unsigned>(m_layers.size());
        SfntTable table;
        table.U16(0).U16(count).U32(kHeader).U32(kHeader + count * kBaseRecord).U16(first);
        return table.Text(records.Bytes()).Text(layers.Bytes());
    }

    SfntTable PaletteTable() const {
        constexpr unsigned kSets = kColourSets, kHeader = 12 + kSets * 2;
        const auto entries = static_cast<unsigned>(m_palette.size());
        SfntTable table;
        table.U16(0).U16(entries).U16(kSets).U16(kSets * entries).U32(kHeader);
        for (unsigned set = 0; set < kSets; ++set) table.U16(set * entries);
        for (const auto& set : m_art.sets) {
            for (const unsigned index : m_palette) {
                const font::RunColour& colour = set[index];
                table.U8(colour.blue).U8(colour.green).U8(colour.red).U8(255);
            }
        }
        return table;
    }

    SfntTable StrikeTable(unsigned set) const {
        constexpr unsigned kVersion = 1, kFlags = 1, kHeader = 12, kStrikeHeader = 4, kPpi = 72;
        std::vector<std::string> images(m_glyphs.size());
        for (const OwnGlyph& own : m_own) {
            if (own.art->IsBlank()) continue;
            // Without the clear borders, since some programs erase the neighbour with them.
            images[own.number] =
                KitPng(GlyphPicture(m_art, *own.art, set, own.art->VisibleBox()), KitPngType::kColoured);
        }
        SfntTable offsets, data;
        const std::size_t start = kStrikeHeader + (images.size() + 1) * 4;
        for (const std::string& image : images) {
            offsets.U32(static_cast<std::uint32_t>(start + data.Size()));
            if (!image.empty()) data.S16(0).S16(0).Text("png ").Text(image);
        }
        offsets.U32(static_cast<std::uint32_t>(start + data.Size()));
        SfntTable table;
        table.U16(kVersion).U16(kFlags).U32(1).U32(kHeader);
        table.U16(static_cast<unsigned>(m_scale.em_pixels)).U16(kPpi);
        return table.Text(offsets.Bytes()).Text(data.Bytes());
    }

    const FontArt& m_art;
    const FontFileNames& m_names;
    const FontScale m_scale;
    std::vector<SfntGlyph> m_glyphs;
    std::vector<OwnGlyph> m_own;
    std::map<unsigned, std::size_t> m_characters;
    std::map<std::size_t, std::vector<ColourLayer>> m_layers;
    /// Colour indexes by palette entry.
    std::vector<unsigned> m_palette{kFaceEntry, kEdgeEntry};
    std::int64_t m_points = 0;
    std::vector<LostGlyph> m_lost;
};

}  // namespace

TrueTypeFile LayeredTrueType(const FontArt& art, const FontFileNames& names, PixelAspect aspect) {
    return TrueTypeBuilder(art, names, aspect).Layered();
}

TrueTypeFile PixelTrueType(const FontArt& art, const FontFileNames& names, unsigned set) {
    return TrueTypeBuilder(art, names, PixelAspect()).Pixels(set);
}

}  // namespace zel::fontkit
