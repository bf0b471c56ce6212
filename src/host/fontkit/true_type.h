#pragma once

#include <string>
#include <vector>

#include "host/fontkit/font_art.h"
#include "module/contract/records/video_standard.h"

namespace zel::fontkit {

/// Added to a code for the characters of the private use area, through which every glyph can be typed, also those whose
/// codes are control characters.
inline constexpr unsigned kPrivateUse = 0xF000;

/// A font file that can be installed.
struct TrueTypeFile {
    std::string bytes;
    /// Glyphs that are left out because of their outlines.
    std::vector<LostGlyph> lost;
};

/// The names of a font file.
struct FontFileNames {
    /// The digits of the font's own file, which name a font without a name.
    std::string stem;
    /// Follows the name of a family that another font has already; may be empty.
    std::string family_end{};
};

/// A font with TrueType outlines, a layer for each colour of a glyph (COLR, version 0) and the colour sets as palettes
/// (CPAL): palette k is set k, its entries 0 and 1 are face and edge. A stored glyph has one layer, the outline itself.
/// @param art     read with its layers.
/// @param aspect  shape of a pixel of the font.
TrueTypeFile LayeredTrueType(const FontArt& art, const FontFileNames& names, PixelAspect aspect);

/// A font with the same outlines for square pixels, and with a strike (sbix): the glyphs' own pixels in a colour set,
/// for the size of FontArt::line_height pixels. Programs that know both prefer layers to a strike, so it has no layers.
TrueTypeFile PixelTrueType(const FontArt& art, const FontFileNames& names, unsigned set);

}  // namespace zel::fontkit
