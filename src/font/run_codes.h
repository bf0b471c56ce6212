#pragma once

#include <cstdint>
#include <span>

/// What a run code does; stored values, in bits 1 and 0.
enum class RunOperation : std::uint8_t { kBackground = 0, kColour = 1, kBlended = 2, kEndOfLine = 3 };

/// One 32-bit run code. A code of 0 as a whole ends the glyph.
struct RunCode {
    std::uint32_t value;

    bool EndsGlyph() const noexcept { return value == 0; }
    RunOperation Operation() const noexcept { return static_cast<RunOperation>(value & 3); }
    bool Stay() const noexcept { return value >> 31 != 0; }  ///< Draw and don't move.
    std::uint8_t ColourIndex() const noexcept { return static_cast<std::uint8_t>(value >> 16 & 0xFF); }
    std::uint8_t Level() const noexcept { return static_cast<std::uint8_t>(value >> 8 & 0xFF); }  ///< Alpha, 0 to 255.
    int Count() const noexcept { return 32 - static_cast<int>(value >> 3 & 0x1F); }               ///< Pixels, 1 to 32.
};

/// A glyph ends at the latest after so many lines, or so many runs in one line, which keeps a damaged glyph bounded.
inline constexpr int kMaxGlyphLines = 500;
inline constexpr int kMaxLineRuns = 500;

/// The run codes of one glyph, from its first code on. Beyond the encoding data the glyph ends.
class RunCodeReader {
  public:
    /// @param encoding_data  a font's, big-endian.
    RunCodeReader(std::span<const std::uint8_t> encoding_data, std::uint32_t glyph_offset) noexcept
        : m_rest(glyph_offset <= encoding_data.size() ? encoding_data.subspan(glyph_offset)
                                                      : std::span<const std::uint8_t>()) {}

    RunCode Next() noexcept {
        if (m_rest.size() < 4) return {0};
        const std::uint32_t value = static_cast<std::uint32_t>(m_rest[0]) << 24 |
                                    static_cast<std::uint32_t>(m_rest[1]) << 16 |
                                    static_cast<std::uint32_t>(m_rest[2]) << 8 | m_rest[3];
        m_rest = m_rest.subspan(4);
        return {value};
    }

  private:
    std::span<const std::uint8_t> m_rest;
};

/// Width and height in pixels.
struct GlyphSize {
    int width = 0;
    int height = 0;
    bool operator==(const GlyphSize&) const = default;
};

/// Size of a run-coded glyph's bitmap: the longest line rounded up to a multiple of 4, and the lines with a blank row
/// above and one below.
GlyphSize MeasureRunCodes(RunCodeReader codes) noexcept;

/// Red, green and blue.
struct RunColour {
    std::uint8_t red = 0, green = 0, blue = 0;
};

/// Colours that a glyph's colour indexes select. An index without a colour gives black.
struct RunColours {
    std::span<const RunColour> colours;  ///< by index.
    RunColour background;

    RunColour operator[](std::uint8_t index) const noexcept {
        return index < colours.size() ? colours[index] : RunColour{};
    }
};

/// Draws a run-coded glyph into rows of pixels (blue, green, red, alpha), top row first. The first row and whatever the
/// glyph doesn't reach keep what they hold, and blended runs mix with it. Codes beyond a line's end or the last row
/// draw nothing.
/// @param pixels  width * height * 4 bytes.
void DrawRunCodes(RunCodeReader codes, const RunColours& colours, int width, int height,
                  std::span<std::uint8_t> pixels) noexcept;
