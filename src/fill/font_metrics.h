#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "module/contract/records/char_entry.h"
#include "module/contract/records/msg_header.h"

namespace zel::fill {

/// What setting a text needs of one character of a font. In pixels and lines.
struct GlyphMetrics {
    bool has_glyph = false;
    /// To the next character: glyph_metric, or the width of the glyph if that is 0.
    int advance = 0;
    int top = 0;
};

/// What setting a text needs of a font.
struct FontMetrics {
    /// The number by which a message names it.
    int number = 0;
    /// UTF-8.
    std::string name;
    /// Limits of a row that is set in this font, in lines: row_top and row_bottom.
    unsigned row_top = 0, row_bottom = 0;
    /// row_top_offset + row_inset: what row_top is measured from when characters of several fonts share a row.
    int top_offset = 0;
    /// An empty row doesn't take its limits from this font.
    bool keeps_row_limits = false;
    /// The largest glyph_top of the glyphs that have pixels, in lines.
    int highest_top = 0;
    std::array<GlyphMetrics, kDirectoryEntries> glyphs{};
};

/// The fonts of a message by slot; empty for a slot whose font wasn't found or can't be read.
using FontSet = std::array<std::optional<FontMetrics>, kFontSlots>;

/// Code of the blank. It can be set without a glyph.
inline constexpr unsigned kBlank = 32;

/// Measures a font file, type 500.
/// @param file    the whole file; needed during the call only.
/// @return empty if an import would not read it either.
std::optional<FontMetrics> MeasureFont(std::span<const std::uint8_t> file, int number);

}  // namespace zel::fill
