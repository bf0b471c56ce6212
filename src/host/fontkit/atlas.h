#pragma once

#include <optional>
#include <vector>

#include "host/fontkit/font_art.h"
#include "host/picture/picture.h"

namespace zel::fontkit {

/// Where a glyph is on the pages: the upper left pixel of its bitmap.
struct AtlasPlace {
    int page = 0;
    int x = 0, y = 0;
};

/// The arrangement of glyphs on pages of one size. Around each glyph is at least one clear pixel, so that a filter that
/// reads neighbours never reads another glyph.
struct Atlas {
    /// Powers of two, at most 4096.
    int page_width = 0, page_height = 0;
    int page_count = 0;
    /// In the order of FontArt::glyphs; empty for a blank.
    std::vector<std::optional<AtlasPlace>> places;
};

/// Arranges the glyphs: on one page, as small as possible, or on several of the largest size.
Atlas ArrangeGlyphs(const FontArt& art);

/// A page with its glyphs in a colour set, with straight alpha.
picture::Picture ColouredPage(const FontArt& art, const Atlas& atlas, int page, unsigned set);

/// What a plane contains.
enum class PlaneContent {
    /// Of run-coded glyphs the low and the high byte of the entry, and the alpha.
    kEntryLow,
    kEntryHigh,
    kLevel,
};

/// A plane of a page: the values of the run-coded glyphs as the picture's alpha, 0 elsewhere.
picture::Picture PlanePage(const FontArt& art, const Atlas& atlas, int page, PlaneContent content);

/// A page with the stored glyphs alone, with straight alpha.
picture::Picture StoredPage(const FontArt& art, const Atlas& atlas, int page);

/// A part of a glyph in a colour set, with straight alpha.
picture::Picture GlyphPicture(const FontArt& art, const GlyphArt& glyph, unsigned set, const picture::PixelBox& box);
/// The whole glyph likewise.
inline picture::Picture GlyphPicture(const FontArt& art, const GlyphArt& glyph, unsigned set) {
    return GlyphPicture(art, glyph, set, {0, 0, glyph.width, glyph.height});
}

}  // namespace zel::fontkit
