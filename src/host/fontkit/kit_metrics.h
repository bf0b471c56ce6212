#pragma once

#include <string>

#include "host/fontkit/atlas.h"
#include "host/fontkit/kit_names.h"

namespace zel::fontkit {

/// The metrics of a kit as JSON: what its files contain, the palettes of the planes, and the place of each glyph. The
/// form is font-kit of docs/schemas.
/// @param glyph_set  the colour set of the glyphs' own pictures.
std::string KitMetricsJson(const FontArt& art, const Atlas& atlas, const KitNames& names, unsigned glyph_set,
                           bool has_true_type);

/// Whether a kit needs a plane with the high bytes of the entries.
bool HasHighPlane(const FontArt& art) noexcept;
/// Whether a font has glyphs of a kind.
bool HasKind(const FontArt& art, ArtKind kind) noexcept;

}  // namespace zel::fontkit
