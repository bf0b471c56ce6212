#pragma once

#include <string>
#include <vector>

#include "host/picture/picture.h"

class CZelFont;

namespace zel::picture {

/// All glyphs of a font in one opaque picture, 16 codes a row, each cell with its code in hexadecimal above the glyph.
/// A row of codes without glyphs is left out.
struct GlyphSheet {
    Picture picture;
    /// Number of codes that have pixels.
    int glyphs = 0;
    /// Number of glyphs larger than a cell can be; their upper left part is drawn.
    int cut = 0;
    /// One line for each glyph that could not be drawn; its cell is red.
    std::vector<std::string> failures;
};

/// Largest width and height of a glyph's cell in pixels. It keeps a sheet below 4200 x 3300.
inline constexpr int kLargestGlyphCell = 256;

/// Draws the glyphs of slot 0 in colour set 7, each at the left of its cell, on the common baseline and on a
/// checkerboard of its own size. A cell without a glyph has a plain ground. The cells are as wide as the widest glyph
/// and high enough for all; if the baselines would make them higher than kLargestGlyphCell, the glyphs are at the top.
/// @param fonts  with a font in slot 0.
GlyphSheet DrawGlyphSheet(CZelFont& fonts);

}  // namespace zel::picture
