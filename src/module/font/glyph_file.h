#pragma once

struct tag_font_memory;
class CFile;

namespace zel::font {

/// Opens the font file of a slot, which contains its stored bitmap glyphs. On failure shows a message box, unless
/// warnings are skipped, and returns false.
bool OpenGlyphFile(CFile& file, const tag_font_memory& font);

}  // namespace zel::font
