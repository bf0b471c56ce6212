#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/system/types.h"
#include "translate/char_inf.h"

/// Coverage of a text character, 0 to 255 a pixel, and where it lies from the pen.
struct Coverage {
    int left = 0;  ///< pixels right of the pen
    int top = 0;   ///< lines below the top of the character cell
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;  ///< top row first
};

/// A character in text form: the edge lies below the face.
struct TextGlyph {
    Coverage face;
    Coverage edge;  ///< empty without an edge
};

/// Draws characters of installed typefaces. A face is looked for by name, weight and slant; one that isn't installed is
/// replaced by the closest. Faces and glyphs are kept for the life of the object.
class TextFaces {
  public:
    TextFaces();
    ~TextFaces();
    TextFaces(const TextFaces&) = delete;
    TextFaces& operator=(const TextFaces&) = delete;

    /// The glyph of a character, with the edge that the record tells. Good until the next call; null when no typeface
    /// is installed or the typeface has no such character.
    const TextGlyph* Get(const LOGFONT& font, const tag_CharInf& info, unsigned character);

  private:
    class Library;
    std::unique_ptr<Library> m_library;
};
