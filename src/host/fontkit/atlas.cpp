#include "host/fontkit/atlas.h"

#include <algorithm>
#include <numeric>

namespace zel::fontkit {

namespace {

constexpr int kSmallestSide = 64, kLargestSide = 4096;
static_assert(kLargestGlyph + 2 <= kLargestSide);
/// Clear pixels around each glyph; two neighbours share them.
constexpr int kGap = 1;

/// Puts glyphs on shelves, from the left to the right and from the top down.
class Shelves {
  public:
    Shelves(int width, int height) : m_width(width), m_height(height) {}

    /// @return empty if no space is left.
    std::optional<AtlasPlace> Place(const GlyphArt& glyph) {
        if (m_x + glyph.width + kGap > m_width) {
            m_y += m_shelf_height + kGap;
            m_x = kGap;
            m_shelf_height = 0;
        }
        if (m_x + glyph.width + kGap > m_width || m_y + glyph.height + kGap > m_height) return std::nullopt;
        const AtlasPlace place{0, m_x, m_y};
        m_x += glyph.width + kGap;
        m_shelf_height = std::max(m_shelf_height, glyph.height);
        return place;
    }

  private:
    int m_width, m_height;
    int m_x = kGap, m_y = kGap;
    int m_shelf_height = 0;
};

/// Indexes of the glyphs with pixels, the highest first, so that shelves lose little.
std::vector<std::size_t> PlacingOrder(const FontArt& art) {
    std::vector<std::size_t> order(art.glyphs.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::erase_if(order, [&](std::size_t index) { return art.glyphs[index].IsBlank(); });
    std::ranges::stable_sort(order, std::greater(), [&](std::size_t index) { return art.glyphs[index].height; });
    return order;
}

bool FitsOnePage(const FontArt& art, const std::vector<std::size_t>& order, Atlas& atlas) {
    Shelves shelves(atlas.page_width, atlas.page_height);
    for (const std::size_t index : order) {
        if (!(atlas.places[index] = shelves.Place(art.glyphs[index]))) return false;
    }
    atlas.page_count = 1;
    return true;
}

/// Every glyph fits on an empty page of the largest size.
void PlaceOnSeveralPages(const FontArt& art, const std::vector<std::size_t>& order, Atlas& atlas) {
    Shelves shelves(atlas.page_width, atlas.page_height);
    int page = 0;
    for (const std::size_t index : order) {
        std::optional<AtlasPlace> place = shelves.Place(art.glyphs[index]);
        if (!place) {
            ++page;
            shelves = Shelves(atlas.page_width, atlas.page_height);
            place = shelves.Place(art.glyphs[index]);
        }
        place->page = page;
        atlas.places[index] = place;
    }
    atlas.page_count = page + 1;
}

/// Calls `draw` for each glyph of a page, with its pixels' row and the pixels of the picture.
template <typename DrawRow>
picture::Picture DrawPage(const FontArt& art, const Atlas& atlas, int page, DrawRow draw) {
    picture::Picture picture = picture::ClearPicture(atlas.page_width, atlas.page_height);
    const picture::PixelView view = picture.View();
    for (std::size_t index = 0; index < art.glyphs.size(); ++index) {
        const GlyphArt& glyph = art.glyphs[index];
        const std::optional<AtlasPlace>& place = atlas.places[index];
        if (!place || place->page != page) continue;
        for (int y = 0; y < glyph.height; ++y) {
            const auto row = view.Row(place->y + y);
            draw(glyph, static_cast<std::size_t>(y) * static_cast<std::size_t>(glyph.width),
                 row.subspan(static_cast<std::size_t>(place->x), static_cast<std::size_t>(glyph.width)));
        }
    }
    return picture;
}

void DrawColouredRow(const FontArt& art, const GlyphArt& glyph, unsigned set, std::size_t first,
                     std::span<picture::Rgba> pixels) {
    if (glyph.kind == ArtKind::kStored) {
        std::copy_n(glyph.pixels.begin() + static_cast<std::ptrdiff_t>(first), pixels.size(), pixels.begin());
    } else {
        for (picture::Rgba& pixel : pixels) pixel = art.PixelOf(glyph, first++, set);
    }
}

}  // namespace

Atlas ArrangeGlyphs(const FontArt& art) {
    Atlas atlas;
    atlas.places.resize(art.glyphs.size());
    const std::vector<std::size_t> order = PlacingOrder(art);
    // Square, or twice as wide as high.
    for (int side = kSmallestSide; side <= kLargestSide; side *= 2) {
        for (const int height : {side / 2, side}) {
            atlas.page_width = side;
            atlas.page_height = height;
            if (FitsOnePage(art, order, atlas)) return atlas;
        }
    }
    PlaceOnSeveralPages(art, order, atlas);
    return atlas;
}

picture::Picture ColouredPage(const FontArt& art, const Atlas& atlas, int page, unsigned set) {
    return DrawPage(art, atlas, page, [&](const GlyphArt& glyph, std::size_t first, std::span<picture::Rgba> pixels) {
        DrawColouredRow(art, glyph, set, first, pixels);
    });
}

picture::Picture PlanePage(const FontArt& art, const Atlas& atlas, int page, PlaneContent content) {
    const auto draw = [content](const GlyphArt& glyph, std::size_t first, std::span<picture::Rgba> pixels) {
        if (glyph.kind != ArtKind::kRunCoded) return;
        for (picture::Rgba& pixel : pixels) {
            const unsigned entry = glyph.entries[first];
            const std::uint8_t level = glyph.levels[first++];
            pixel.alpha = content == PlaneContent::kLevel
                              ? level
                              : static_cast<std::uint8_t>(content == PlaneContent::kEntryLow ? entry : entry >> 8);
        }
    };
    return DrawPage(art, atlas, page, draw);
}

picture::Picture StoredPage(const FontArt& art, const Atlas& atlas, int page) {
    return DrawPage(art, atlas, page, [&](const GlyphArt& glyph, std::size_t first, std::span<picture::Rgba> pixels) {
        if (glyph.kind == ArtKind::kStored) DrawColouredRow(art, glyph, 0, first, pixels);
    });
}

picture::Picture GlyphPicture(const FontArt& art, const GlyphArt& glyph, unsigned set, const picture::PixelBox& box) {
    picture::Picture picture = picture::ClearPicture(box.Width(), box.Height());
    const picture::PixelView view = picture.View();
    for (int y = 0; y < box.Height(); ++y) {
        const auto first = static_cast<std::size_t>(box.top + y) * static_cast<std::size_t>(glyph.width) +
                           static_cast<std::size_t>(box.left);
        DrawColouredRow(art, glyph, set, first, view.Row(y));
    }
    return picture;
}

}  // namespace zel::fontkit
