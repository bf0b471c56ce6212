#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "module/contract/records/char_inf.h"
#include "platform/system/types.h"

namespace zel::picture {

/// Coverage of a text character, 0 to 255 a pixel, and where it lies around the pen on the baseline.
struct Coverage {
    int left = 0;  ///< pixels from the pen right to the first column
    int top = 0;   ///< lines from the baseline up to the upper edge of the first line
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;  ///< top row first
};

/// A character in text form; the edge lies below the face and is empty without one.
struct TextGlyph {
    Coverage face;
    Coverage edge;
};

/// Draws characters of installed typefaces. A typeface is looked for by the name, weight and slant of the description;
/// one that isn't installed is replaced by the closest. Typefaces and glyphs are kept for the life of the object, which
/// opens its libraries with the first character.
class TextFaces {
  public:
    TextFaces();
    ~TextFaces();
    TextFaces(const TextFaces&) = delete;
    TextFaces& operator=(const TextFaces&) = delete;

    /// The glyph of a character with the edge that its record tells, at the description's height: above 0 the height of
    /// the character cell, below 0 that of the em, both in lines.
    /// @return null for a height of 0, without any typeface, and for a character that can't be drawn. Good until the
    /// next
    ///         call.
    const TextGlyph* Get(const LOGFONT& font, const tag_CharInf& info, unsigned character);

  private:
    class Library;
    std::unique_ptr<Library> m_library;
};

}  // namespace zel::picture
