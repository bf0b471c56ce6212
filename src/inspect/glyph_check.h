#pragma once

#include <cstdint>
#include <span>

#include "module/font/format/font_loader.h"
#include "inspect/report.h"

namespace inspect {

/// Fills in the glyph counts and sizes of a font's report, and reports glyphs that can't be drawn whole.
/// @param slot     with header and directory.
/// @param outcome  of the font's reading; stored glyphs are looked at only where it located them all.
void CheckGlyphs(std::span<const std::uint8_t> bytes, const tag_font_memory& slot, FontOutcome outcome,
                 FileReport& report);

}  // namespace inspect
