#pragma once

#include <cstdint>
#include <span>

#include "inspect/report.h"
#include "module/font/format/font_loader.h"
#include "module/font/format/stored_glyph.h"

namespace zel::inspect {

/// Adds the glyph counts and sizes to a font's report, and reports glyphs that can't be drawn completely.
/// @param slot     has a header and a directory.
/// @param outcome  of reading the font. Stored glyphs are checked only if the font was read to its end.
void CheckGlyphs(std::span<const std::uint8_t> bytes, const tag_font_memory& slot, font::FontOutcome outcome,
                 FileReport& report);

/// Reports what nothing reads of a stored glyph's record: fields that aren't zero, and bytes after the pixels.
/// @param record  to the end of the file.
/// @param place   with the offset of the record, and the code of the glyph.
void CheckStoredGlyphUnread(std::span<const std::uint8_t> record, const font::StoredGlyphHead& head, Place place,
                            RecordKind kind, FileReport& report);

}  // namespace zel::inspect
