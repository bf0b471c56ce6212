#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "module/contract/records/char_inf.h"
#include "module/contract/zel_font.h"
#include "platform/framework/geometry.h"

namespace zel::host {

/// One glyph: its rectangle and its pixels as BuildMFData leaves them, 4 bytes each (blue, green, red, alpha), bottom
/// row first.
struct GlyphBitmap {
    CRect rect;
    std::vector<std::uint8_t> pixels;    ///< empty for an empty rectangle, and when they could not be had.
    std::optional<std::uint32_t> crc32;  ///< of the pixels, once it was asked for.
    bool broken = false;                 ///< its record in the font file is cut short.
};

/// The pixels of the characters of one message, asked of its font set and kept, so that a stored glyph that is used
/// again costs no second opening of the font file. Run-coded glyphs stay for the messages that follow: a disk has few
/// fonts. They are known again by the font's run codes and directory and by all colours, which is what they are drawn
/// from.
class GlyphBitmaps {
  public:
    /// Takes glyphs from this font set from now on, null for none, and forgets those that only its files hold.
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
    /// Font, character, colour set. A font is known by its address, or for its run-coded glyphs by its number.
    using Key = std::tuple<std::uintptr_t, unsigned, int>;
    using Glyphs = std::map<Key, GlyphBitmap>;

    /// What the run-coded glyphs of a font are drawn from.
    struct Drawing {
        std::vector<std::uint8_t> codes;
        std::vector<tag_char_entry> directory;
    };
    struct Colours {
        std::array<std::uint32_t, std::extent_v<decltype(CZelFont::m_Palette)>> palette{};
        COLORREF face = 0, edge = 0, background = 0;
        bool operator==(const Colours&) const = default;
    };

    std::size_t NumberOf(const tag_font_memory& font);
    void ForgetRunCoded();
    GlyphBitmap& Find(const tag_CharInf& info, unsigned character);
    void Fetch(const tag_CharInf& info, unsigned character, GlyphBitmap& glyph);

    CZelFont* m_fonts = nullptr;
    Glyphs m_stored;
    Glyphs m_run_coded;
    std::vector<Drawing> m_drawings;                                        // a font's number is its place here
    std::vector<std::pair<const tag_font_memory*, std::size_t>> m_numbers;  // of the fonts of this message
    Colours m_colours;
    std::size_t m_stored_bytes = 0;
    std::size_t m_run_coded_bytes = 0;  // with the drawings
    std::vector<std::string> m_failures;
};

}  // namespace zel::host
