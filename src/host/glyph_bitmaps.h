#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "font/zel_font.h"
#include "platform/framework/geometry.h"
#include "translate/char_inf.h"

/// One glyph: its rectangle and its pixels as BuildMFData leaves them, 4 bytes each (blue, green, red, alpha), bottom
/// row first.
struct GlyphBitmap {
    CRect rect;
    std::vector<std::uint8_t> pixels;    ///< empty for an empty rectangle, and when they could not be had.
    std::optional<std::uint32_t> crc32;  ///< of the pixels, once it was asked for.
    bool broken = false;                 ///< its record in the font file is cut short.
};

/// The pixels of the characters of one message, asked of its font set and kept, so that a stored glyph that is used
/// again costs no second opening of the font file.
class GlyphBitmaps {
  public:
    /// Forgets all glyphs and takes them from this font set from now on; null for none.
    void SetFonts(CZelFont* fonts);

    /// The glyph of a character in bitmap form; the empty one in text form. Good until the next call. What keeps it
    /// from being had is noted in Failures, nothing is thrown but std::bad_alloc.
    const GlyphBitmap& Get(const tag_CharInf& info, unsigned character);

    /// As Get, but a glyph whose record is cut short ends the caller's import, as it would in a host that catches
    /// nothing.
    /// @throws CFileException, cause 1, OS error -1, with the font file's name.
    const GlyphBitmap& Demand(const tag_CharInf& info, unsigned character);

    /// Checksum of the glyph's pixels, worked out once; nothing without pixels.
    std::optional<std::uint32_t> Checksum(const tag_CharInf& info, unsigned character);

    /// A line for each glyph that could not be had, and the same given away.
    const std::vector<std::string>& Failures() const noexcept { return m_failures; }
    std::vector<std::string> TakeFailures() { return std::exchange(m_failures, {}); }

  private:
    using Key = std::tuple<const tag_font_memory*, unsigned, int>;

    GlyphBitmap& Find(const tag_CharInf& info, unsigned character);
    void Fetch(const tag_CharInf& info, unsigned character, GlyphBitmap& glyph);

    CZelFont* m_fonts = nullptr;
    std::map<Key, GlyphBitmap> m_glyphs;
    std::size_t m_bytes = 0;
    std::vector<std::string> m_failures;
};
