#pragma once

#include <cstddef>
#include <limits>
#include <memory>

#include "host/picture/coverage.h"
#include "module/contract/records/char_inf.h"
#include "platform/system/types.h"

namespace zel::picture {

/// A character in text form. The edge is drawn below the face; it is empty for a character without an edge.
struct TextGlyph {
    Coverage face;
    Coverage edge;
};

/// Draws characters of installed typefaces. A typeface is found by the name, weight and slant of the description; the
/// closest replaces one that isn't installed. Typefaces and glyphs are cached for the life of the object, which loads
/// the list of typefaces with the first character. One thread uses it.
class TextRenderer {
  public:
    TextRenderer();
    ~TextRenderer();
    TextRenderer(const TextRenderer&) = delete;
    TextRenderer& operator=(const TextRenderer&) = delete;

    /// The glyph of a character with the edge in its record. The description's height is, in pixels, that of the
    /// character cell above 0, and that of the em below 0.
    /// @return null for a height of 0, without any typeface, for a character that can't be drawn, and once
    ///         IsExhausted. Valid until the next call.
    const TextGlyph* Get(const LOGFONT& font, const tag_CharInf& info, unsigned character);

    /// Limits the characters that are drawn from here on, until the next call, to 16 MiB: heights come from files. An
    /// object whose texts are its caller's own needs no limit.
    void BeginMessage() noexcept;
    /// Whether the limit is reached. Only cached characters are returned then.
    bool IsExhausted() const noexcept { return m_left == 0; }

  private:
    class Cache;
    std::unique_ptr<Cache> m_cache;
    /// Bytes of the characters that may still be drawn.
    std::size_t m_left = std::numeric_limits<std::size_t>::max();
};

}  // namespace zel::picture
