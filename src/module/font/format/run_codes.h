#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

namespace zel::font {

/// What a run code does; stored values, in bits 1 and 0.
enum class RunOperation : std::uint8_t { kBackground = 0, kColour = 1, kBlended = 2, kEndOfLine = 3 };

/// One 32-bit run code. A code of 0 as a whole ends the glyph.
struct RunCode {
    std::uint32_t file;  ///< the four bytes as they lie in the file, the first lowest.

    bool EndsGlyph() const noexcept { return file == 0; }
    RunOperation Operation() const noexcept { return static_cast<RunOperation>(file >> 24 & 3); }
    bool Stay() const noexcept { return (file & 0x80) != 0; }  ///< Draw and don't move.
    std::uint8_t ColourIndex() const noexcept { return static_cast<std::uint8_t>(file >> 8); }
    std::uint8_t Level() const noexcept { return static_cast<std::uint8_t>(file >> 16); }  ///< Alpha, 0 to 255.
    int Count() const noexcept { return 32 - static_cast<int>(file >> 27); }               ///< Pixels, 1 to 32.

    /// A colour run that moves on.
    bool IsColourRun() const noexcept { return (file & kOperationAndStay) == 1U << 24; }
    /// A background run, but for those with the stay bit, which means nothing there.
    bool IsBackgroundRun() const noexcept { return (file & kOperationAndStay) == 0 && !EndsGlyph(); }

  private:
    static constexpr std::uint32_t kOperationAndStay = 3U << 24 | 0x80;
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
        if (Left() == 0) return {0};
        const RunCode code = At(0);
        Skip(1);
        return code;
    }

    /// Codes that Next has not read yet.
    std::size_t Left() const noexcept { return m_rest.size() / 4; }
    /// @param index  from the next code on, below Left().
    RunCode At(std::size_t index) const noexcept {
        RunCode code{};
        std::memcpy(&code, m_rest.data() + index * 4, sizeof code);
        return code;
    }
    /// @param count  at most Left().
    void Skip(std::size_t count) noexcept { m_rest = m_rest.subspan(count * 4); }

    /// What Next has not read yet.
    std::span<const std::uint8_t> Rest() const noexcept { return m_rest; }

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

/// One way of measuring. All ways give the same size.
struct MeasurePath {
    const char* name;
    GlyphSize (*measure)(RunCodeReader codes) noexcept;
};

/// The ways that this processor can go, the fastest first, the one without vector instructions last.
std::span<const MeasurePath> MeasurePaths() noexcept;

/// Red, green and blue.
struct RunColour {
    std::uint8_t red = 0, green = 0, blue = 0;
};

/// Colours that a glyph's colour indexes select. An index without a colour gives black.
struct RunColours {
    static constexpr std::size_t kMost = 32;

    std::span<const RunColour> colours;  ///< by index; kMost at most.
    RunColour background;

    RunColour operator[](std::uint8_t index) const noexcept {
        return index < colours.size() ? colours[index] : RunColour{};
    }
};

/// Rows of pixels (blue, green, red, alpha) from the top one on.
struct PixelRows {
    std::uint8_t* top = nullptr;
    std::ptrdiff_t stride = 0;  ///< bytes from a row to the one below; negative in a bottom-up bitmap.
    int width = 0;              ///< pixels.
    int height = 0;
    /// What every byte holds before the glyph is drawn; without it, what stands there.
    std::optional<std::uint8_t> fill{};
};

/// Draws a run-coded glyph. The first row and whatever the glyph doesn't reach keep what they hold, and blended runs
/// mix with it. Codes beyond a line's end or the last row draw nothing.
void DrawRunCodes(RunCodeReader codes, const RunColours& colours, const PixelRows& rows) noexcept;

}  // namespace zel::font
