#pragma once

struct tag_font_memory;
class CFile;

namespace zel::font {

/// Opens the font file that a slot's stored bitmap glyphs lie in. When that fails, tells the user unless warnings are
/// skipped.
bool OpenGlyphFile(CFile& file, const tag_font_memory& font);

}  // namespace zel::font
