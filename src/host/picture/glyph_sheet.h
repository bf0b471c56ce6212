#pragma once

#include <string>
#include <vector>

#include "host/picture/picture.h"

namespace zel::picture {

/// All glyphs of a font in one opaque picture, 16 codes a row, each cell with its code in hexadecimal above the glyph.
struct GlyphSheet {
    Picture picture;
    int glyphs = 0;                     ///< codes that have pixels.
    int cut = 0;                        ///< glyphs larger than a cell can be, of which the upper left part is shown.
    std::vector<std::string> failures;  ///< a line for each glyph that couldn't be had; its cell is red.
};

/// Largest width and height of a glyph's cell in pixels, so that a sheet stays below 4200 x 3300.
inline constexpr int kLargestGlyphCell = 256;

/// Draws the glyphs of slot 0 in colour set 7, each at the upper left of its cell on a checkerboard of its own size;
/// the ground of a cell without a glyph stays plain. A cell is as large as the largest glyph.
/// @param fonts  with a font in slot 0.
GlyphSheet DrawGlyphSheet(CZelFont& fonts);

}  // namespace zel::picture
