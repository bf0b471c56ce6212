#pragma once

#include <cstdint>
#include <span>

#include "inspect/report.h"
#include "module/font/format/font_loader.h"

namespace zel::inspect {

/// Adds the glyph counts and sizes to a font's report, and reports glyphs that can't be drawn completely.
/// @param slot     has a header and a directory.
/// @param outcome  of reading the font. Stored glyphs are checked only if the font was read to its end.
void CheckGlyphs(std::span<const std::uint8_t> bytes, const tag_font_memory& slot, font::FontOutcome outcome,
                 FileReport& report);

}  // namespace zel::inspect
