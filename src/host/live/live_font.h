#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "fill/font_metrics.h"
#include "module/contract/records/palette.h"

namespace zel::live {

/// A glyph of a template.
struct LiveGlyph {
    /// In pixels.
    int width = 0, height = 0;
    /// See glyph_stream.h: classes of a run-coded glyph; straight red, green, blue and alpha of a stored one.
    std::string stream{};
};

/// How the pixels of a class look.
struct PixelClass {
    /// Index that no colour set has, which is black.
    static constexpr unsigned kBlack = kSetEntries;
    /// Index of pixels in which colours are mixed.
    static constexpr unsigned kMixed = kBlack + 1;

    /// Of the colour in the character's colour set.
    unsigned index = 0;
    /// The alpha, 1 to 255, to which the colour is limited before it is divided by it. Of mixed pixels, their number in
    /// LiveFont::mixed.
    unsigned level = 0;
};

/// What a template needs of a font.
struct LiveFont {
    /// 0xRRGGBBAA, straight, by colour set.
    using MixedColours = std::array<std::uint32_t, kColourSets>;

    fill::FontMetrics metrics;
    /// Fields have this font, so that all of its glyphs are here.
    bool is_for_fields = false;
    /// Those of all run-coded glyphs; class 1 is the first one.
    std::vector<PixelClass> classes{};
    std::vector<MixedColours> mixed{};
    /// By code. A code without a glyph draws nothing.
    std::map<unsigned, LiveGlyph> run_coded{}, stored{};
};

/// What the glyphs of a message may still have. The sizes are those of a message that the host draws.
class GlyphBudget {
  public:
    /// @throws std::runtime_error with the reason, when that is more than is left.
    void TakePixels(std::uint64_t count);
    void TakeCodes(std::uint64_t count);

  private:
    /// 4 bytes each.
    std::uint64_t m_pixels = std::uint64_t{12} << 20;
    std::uint64_t m_codes = std::uint64_t{16} << 20;
};

/// Reads what a template needs of a font file, with the pixels that the module builds for a host.
class LiveFontReader {
  public:
    /// @param file, budget  kept alive by the caller.
    /// @param number        by which a message names the font.
    /// @throws std::runtime_error for a file that an import doesn't read.
    LiveFontReader(std::span<const std::uint8_t> file, int number, const tag_palete& palette, GlyphBudget& budget);
    ~LiveFontReader();
    LiveFontReader(LiveFontReader&&) noexcept;

    const fill::FontMetrics& Metrics() const noexcept;

    /// Adds the glyph of a code, if there is one. @throws std::runtime_error as GlyphBudget
    void Add(unsigned code);
    /// Adds the glyphs of all codes, for texts. @throws as Add
    void AddAll();

    /// What has been added. Called once, last.
    LiveFont Take();

  private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace zel::live
