#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "host/fontkit/colour_sets.h"
#include "host/picture/pixel_view.h"

class CZelFont;

namespace zel::fontkit {

/// How much of each pixel a shape covers, 0 to 255; rows from the top.
struct CoveragePlane {
    int width = 0;
    int height = 0;
    /// width * height values.
    std::vector<std::uint8_t> bytes;
};

/// What is drawn in one colour of a set.
struct ArtLayer {
    /// In the colour sets.
    unsigned colour_index = 0;
    /// Of this colour and of all those drawn above it, so that layers drawn one over the other have no seams.
    CoveragePlane coverage;
};

/// What a glyph is made of.
enum class ArtKind {
    /// No pixels, but an advance.
    kBlank,
    /// Drawn in the colours of a set.
    kRunCoded,
    /// Has its own colours.
    kStored,
};

/// One glyph. Its bitmap is the one that an import gives to its host, with all blank rows and columns.
struct GlyphArt {
    /// 0 to 191: the character in Latin-1.
    unsigned code = 0;
    ArtKind kind = ArtKind::kBlank;
    /// Of the bitmap, in pixels; 0 for a blank.
    int width = 0, height = 0;
    /// From the baseline up to the upper edge of the bitmap, in pixels.
    int top = 0;
    /// To the next character, in pixels: glyph_metric, or the width of the bitmap if that is 0.
    int advance = 0;
    /// Of a run-coded glyph: for each pixel its entry in FontArt::colours, and its alpha.
    std::vector<std::uint16_t> entries;
    std::vector<std::uint8_t> levels;
    /// Of a stored glyph: straight pixels.
    std::vector<picture::Rgba> pixels;
    /// The bottom one first; its coverage is the alpha. None unless layers were asked for. A stored glyph has one,
    /// whose colour index has no meaning.
    std::vector<ArtLayer> layers;

    bool IsBlank() const noexcept { return kind == ArtKind::kBlank; }
    /// The part of the bitmap that has visible pixels.
    picture::PixelBox VisibleBox() const noexcept;
};

/// A glyph that can't be drawn.
struct LostGlyph {
    unsigned code = 0;
    std::string reason;
};

/// One colour of a pixel in each colour set.
using SetColours = std::array<font::RunColour, kColourSets>;

/// All glyphs of a font, apart from the font's file.
struct FontArt {
    /// UTF-8.
    std::string name;
    /// font_height, in pixels; may be 0 or below.
    int font_height = 0;
    /// From the top of a line down to the baseline: the largest `top` of a glyph with pixels.
    int base = 0;
    /// From a line to the next: font_height if that is usable, else the height of all glyphs on one baseline.
    int line_height = 1;
    ColourSets sets;
    /// The colours of run-coded pixels, without alpha. The first 32 are those of the sets; mixtures follow.
    std::vector<SetColours> colours;
    /// In the order of their codes; the blank, code 32, is always among them.
    std::vector<GlyphArt> glyphs;
    std::vector<LostGlyph> lost;

    /// The pixel of a run-coded glyph in a colour set.
    picture::Rgba PixelOf(const GlyphArt& glyph, std::size_t pixel, unsigned set) const {
        const std::uint8_t alpha = glyph.levels[pixel];
        if (alpha == 0) return {};
        const font::RunColour& colour = colours[glyph.entries[pixel]][set];
        return {colour.red, colour.green, colour.blue, alpha};
    }
};

/// Whether the layers of outlines are needed.
enum class ArtLayers { kNone, kEach };

/// The largest side of a glyph, in pixels: that of a page without its borders.
inline constexpr int kLargestGlyph = 4094;

/// Reads all glyphs of the font in slot 0. The sizes come from a file: a glyph beyond a bound is lost, with its reason.
/// @param fonts  with a font in slot 0.
/// @throws std::bad_alloc
FontArt ReadFontArt(CZelFont& fonts, const ColourSets& sets, ArtLayers layers);

}  // namespace zel::fontkit
