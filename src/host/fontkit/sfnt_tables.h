#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/fontkit/glyph_outline.h"
#include "host/fontkit/sfnt_writer.h"

namespace zel::fontkit {

/// A glyph of a font file.
struct SfntGlyph {
    GlyphOutline outline;
    /// In font units, at most 65,535.
    int advance = 0;
};

/// What the tables of every font file are made of.
struct SfntFont {
    /// The name of the family, UTF-8.
    std::string family;
    /// Differs between any two fonts.
    std::string identity;
    FontScale scale;
    /// In font units; the descender is 0 or below.
    int ascender = 0, descender = 0;
    /// Number of a glyph by character, which is below 0xFFFF.
    const std::map<unsigned, std::size_t>* characters = nullptr;
    /// Fewer than 65,536; the first is drawn for missing characters.
    const std::vector<SfntGlyph>* glyphs = nullptr;
};

/// The glyph for missing characters, an empty box.
SfntGlyph MissingGlyph(const FontScale& scale);

/// The tables that a font with TrueType outlines must have, and the two that keep programs from moving its points.
/// Times are constant, so that the same font always gives the same bytes.
SfntTables BasicTables(const SfntFont& font);

}  // namespace zel::fontkit
