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

/// One glyph: its rectangle and its pixels as BuildMFData writes them, 4 bytes each (blue, green, red, alpha), bottom
/// row first.
struct GlyphBitmap {
    CRect rect;
    /// Empty for an empty rectangle and after a failure.
    std::vector<std::uint8_t> pixels;
    /// Of the pixels, once it was requested.
    std::optional<std::uint32_t> crc32;
    /// The glyph's record in the font file is incomplete.
    bool truncated = false;
};

/// The pixels of the characters of one message. They are requested from its font set once and cached, so that a
/// repeated stored glyph does not open the font file again. Run-coded glyphs are kept for the following messages, since
/// a disk has few fonts: such a glyph is identified by what it is drawn from, which is the font's run codes and
/// directory and all colours. Fonts with unusually many run codes are left out, since those would be copied.
class GlyphBitmaps {
  public:
    /// Bytes of all glyphs of a message, 35 times its picture's. A message of ordinary text needs a tenth of this.
    static constexpr std::uint64_t kMessageBytes = std::uint64_t{48} << 20;

    /// @param budget  bytes of the glyphs that are requested from one font set. The sizes come from files: a glyph
    ///                beyond the budget is a failure, as is one beyond the number of run codes of a font set.
    explicit GlyphBitmaps(std::uint64_t budget = kMessageBytes) : m_budget(budget), m_left(budget) {}

    /// Uses this font set from now on, null for none. Drops the glyphs that are not kept of the set before.
    void SetFonts(CZelFont* fonts);

    /// The glyph of a character in bitmap form; an empty one in text form. Valid until the next call. Errors are
    /// appended to Failures(); throws only std::bad_alloc.
    const GlyphBitmap& Get(const tag_CharInf& info, unsigned character);

    /// As Get, but an incomplete record ends the caller's import, as in a host that catches no exceptions.
    /// @throws CFileException, cause 1, OS error -1, with the font file's name.
    const GlyphBitmap& GetOrThrow(const tag_CharInf& info, unsigned character);

    /// Drops all cached glyphs, for a caller that requests each only once. The budget stays as it is.
    void Drop();

    /// Checksum of the glyph's pixels, computed once; empty without pixels.
    std::optional<std::uint32_t> Checksum(const tag_CharInf& info, unsigned character);

    /// Appends a line to Failures for a character that the caller can't draw.
    /// @param reason  follows the character's name and its font.
    void AddFailure(const tag_CharInf& info, unsigned character, const std::string& reason);

    /// One line for each glyph without pixels, at most 1000. TakeFailures moves the lines out.
    const std::vector<std::string>& Failures() const noexcept { return m_failures; }
    std::vector<std::string> TakeFailures() { return std::exchange(m_failures, {}); }

  private:
    /// Font, character, colour set. The font is its address, or for glyphs in m_run_coded its number.
    using Key = std::tuple<std::uintptr_t, unsigned, int>;
    using Glyphs = std::map<Key, GlyphBitmap>;

    /// What the run-coded glyphs of a font are drawn from, besides the colours.
    struct RunCodedFont {
        std::vector<std::uint8_t> codes;
        std::vector<tag_char_entry> directory;
    };
    struct Colours {
        std::array<std::uint32_t, std::extent_v<decltype(CZelFont::m_Palette)>> palette{};
        COLORREF face = 0, edge = 0, background = 0;
        bool operator==(const Colours&) const = default;
    };

    /// Number of a font with run codes: its index in m_run_coded_fonts.
    std::size_t NumberOf(const tag_font_memory& font);
    std::size_t FindOrAdd(const tag_font_memory& font);
    /// Drops the run-coded glyphs unless the font set's colours are those that they were drawn in.
    void UseColours();
    void DropOwn();
    void DropRunCoded();
    GlyphBitmap& Find(const tag_CharInf& info, unsigned character);
    void Fetch(const tag_CharInf& info, unsigned character, GlyphBitmap& glyph);
    /// @return why there are no pixels, to follow the glyph's name; empty without an error.
    /// @throws exceptions of the module, std::bad_alloc.
    std::string Draw(const tag_CharInf& info, unsigned character, GlyphBitmap& glyph);
    /// Counts the glyph's run codes. @return false if there are more than remain.
    bool TakeCodes(const tag_font_memory& font, unsigned character) noexcept;

    const std::uint64_t m_budget;
    /// Of m_budget, for the font set.
    std::uint64_t m_left;
    /// Run codes that may still be drawn for the font set.
    std::size_t m_codes_left = 0;
    CZelFont* m_fonts = nullptr;
    /// Of this message: stored glyphs, and those of fonts with many run codes.
    Glyphs m_own;
    /// Run-coded glyphs that are kept for the following messages.
    Glyphs m_run_coded;
    std::vector<RunCodedFont> m_run_coded_fonts;
    /// Of the fonts of this message.
    std::vector<std::pair<const tag_font_memory*, std::size_t>> m_numbers;
    Colours m_colours;
    std::size_t m_own_bytes = 0;
    /// Including m_run_coded_fonts.
    std::size_t m_run_coded_bytes = 0;
    std::vector<std::string> m_failures;
};

}  // namespace zel::host
