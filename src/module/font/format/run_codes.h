#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace zel::font {

/// Operation of a run code; stored values, in bits 1 and 0.
enum class RunOperation : std::uint8_t { kBackground = 0, kColour = 1, kBlended = 2, kEndOfLine = 3 };

/// One 32-bit run code. A code of 0 ends the glyph.
struct RunCode {
    /// The four bytes of the file, the first one in the lowest byte.
    std::uint32_t file;

    bool EndsGlyph() const noexcept { return file == 0; }
    RunOperation Operation() const noexcept { return static_cast<RunOperation>(file >> 24 & 3); }
    /// Draw one pixel and keep the position.
    bool Stay() const noexcept { return (file & 0x80) != 0; }
    std::uint8_t ColourIndex() const noexcept { return static_cast<std::uint8_t>(file >> 8); }
    /// Alpha, 0 to 255.
    std::uint8_t Level() const noexcept { return static_cast<std::uint8_t>(file >> 16); }
    /// In pixels, 1 to 32.
    int Count() const noexcept { return 32 - static_cast<int>(file >> 27); }

    /// A colour run that moves the position.
    bool IsColourRun() const noexcept { return (file & kOperationAndStay) == 1U << 24; }
    /// A background run without the stay bit. Drawing ignores the bit of a background run; measuring doesn't.
    bool IsBackgroundRun() const noexcept { return (file & kOperationAndStay) == 0 && !EndsGlyph(); }

  private:
    static constexpr std::uint32_t kOperationAndStay = 3U << 24 | 0x80;
};

/// Maximum number of lines of a glyph, and of runs in one line. A glyph ends there at the latest, so that a damaged one
/// can't take long.
inline constexpr int kMaxGlyphLines = 500;
inline constexpr int kMaxLineRuns = 500;
/// Maximum number of run codes of a glyph, more than 500 lines of 499 runs have. Codes that stay, and background runs,
/// aren't counted in every case; without this limit they could fill the encoding data.
inline constexpr std::size_t kMaxGlyphCodes = std::size_t{1} << 18;

/// Reads the run codes of one glyph. The end of the encoding data ends the glyph, and so do kMaxGlyphCodes.
class RunCodeReader {
  public:
    /// @param encoding_data  of the font, big-endian; must outlive the reader.
    /// @param glyph_offset   position of the glyph's first code in the encoding data, in bytes.
    RunCodeReader(std::span<const std::uint8_t> encoding_data, std::uint32_t glyph_offset) noexcept
        : m_rest(glyph_offset <= encoding_data.size() ? encoding_data.subspan(glyph_offset)
                                                      : std::span<const std::uint8_t>()) {
        m_rest = m_rest.first(std::min(m_rest.size(), kMaxGlyphCodes * 4));
    }

    RunCode Next() noexcept {
        if (Left() == 0) return {0};
        const RunCode code = At(0);
        Skip(1);
        return code;
    }

    /// Number of complete codes that are left.
    std::size_t Left() const noexcept { return m_rest.size() / 4; }
    /// @param index  relative to the next code; less than Left().
    RunCode At(std::size_t index) const noexcept {
        RunCode code{};
        std::memcpy(&code, m_rest.data() + index * 4, sizeof code);
        return code;
    }
    /// @param count  at most Left().
    void Skip(std::size_t count) noexcept { m_rest = m_rest.subspan(count * 4); }

    /// The bytes that are left.
    std::span<const std::uint8_t> Rest() const noexcept { return m_rest; }

  private:
    std::span<const std::uint8_t> m_rest;
};

}  // namespace zel::font
