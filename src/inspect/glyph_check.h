#pragma once

#include <cstdint>
#include <span>

#include "inspect/report.h"
#include "module/font/format/font_loader.h"

namespace zel::inspect {

/// Fills in the glyph counts and sizes of a font's report, and reports glyphs that can't be drawn whole.
/// @param slot     with header and directory.
/// @param outcome  of the font's reading; stored glyphs are looked at only where it located them all.
void CheckGlyphs(std::span<const std::uint8_t> bytes, const tag_font_memory& slot, font::FontOutcome outcome,
                 FileReport& report);

}  // namespace zel::inspect
