#include "module/font/format/draw_run_codes.h"

#include <algorithm>
#include <cstring>

#include "module/font/format/straighten.h"

namespace zel::font {

namespace {

struct Pixel {
    std::uint8_t blue, green, red, alpha;
};
static_assert(sizeof(Pixel) == 4);

// value / 255, rounded to the nearest. Since 255 is odd, there is never a tie.
constexpr unsigned DivideBy255(unsigned value) noexcept {
    return (value + 127) / 255;
}

constexpr std::size_t kPixel = sizeof(Pixel);
constexpr int kPixelsPerStep = 8;

inline void PutEight(std::uint8_t* out, std::uint32_t pixel) noexcept {
    const std::uint32_t four[] = {pixel, pixel, pixel, pixel};
    std::memcpy(out, four, sizeof four);
    std::memcpy(out + sizeof four, four, sizeof four);
}

// Writes a pixel `count` times.
inline void Repeat(std::uint8_t* out, int count, std::uint32_t pixel) noexcept {
    for (; count >= kPixelsPerStep; count -= kPixelsPerStep, out += kPixelsPerStep * kPixel) PutEight(out, pixel);
    for (; count > 0; --count, out += kPixel) std::memcpy(out, &pixel, kPixel);
}

// Writes a pixel at least `count` and at most `room` times. A short run needs no branch for its length.
inline void RepeatAtLeast(std::uint8_t* out, int count, int room, std::uint32_t pixel) noexcept {
    if (room < kPixelsPerStep) return Repeat(out, count, pixel);
    PutEight(out, pixel);
    if (count <= kPixelsPerStep) return;
    std::uint8_t* const last = out + static_cast<std::size_t>(count - kPixelsPerStep) * kPixel;
    for (out += kPixelsPerStep * kPixel; out < last; out += kPixelsPerStep * kPixel) PutEight(out, pixel);
    PutEight(last, pixel);
}

constexpr std::uint32_t AsWord(unsigned blue, unsigned green, unsigned red, unsigned alpha) noexcept {
    return blue | green << 8 | red << 16 | alpha << 24;
}

// For each colour, the pixel that a colour run draws at each level: the colour limited to the level and straightened,
// as for a stored pixel. A table is made when its colour is first used. Most codes of a glyph use one or two colours,
// so a table saves time after a few dozen codes.
class Ramps {
  public:
    // Pixels by level.
    using Ramp = std::uint32_t[256];

    explicit Ramps(const RunColours& colours) noexcept : m_colours(colours) {}

    const Ramp& Of(std::uint8_t index) noexcept {
        const std::size_t ramp = std::min<std::size_t>(index, kSize - 1);  // one ramp for all indexes without a colour
        if ((m_made >> ramp & 1) == 0) Make(ramp);
        return m_pixels[ramp];
    }

  private:
    static constexpr std::size_t kSize = RunColours::kMaxCount + 1;

    void Make(std::size_t ramp) noexcept {
        const RunColour colour = m_colours[static_cast<std::uint8_t>(ramp)];
        const std::uint32_t stored = AsWord(0, colour.blue, colour.green, colour.red);
        for (std::uint32_t level = 0; level < 256; ++level) m_pixels[ramp][level] = stored | level;
        auto* const bytes = reinterpret_cast<std::uint8_t*>(m_pixels[ramp]);
        straighten::Paths().front().Convert(bytes, bytes, 256);
        m_made |= std::uint64_t{1} << ramp;
    }

    const RunColours m_colours;
    // Bit n: ramp n has been made.
    std::uint64_t m_made = 0;
    Ramp m_pixels[kSize];
};

// The drawing position and the counters of one glyph. In the current row, the pixels before the position are final, and
// the pixel at the position is what a stay code left there. The rest of the row is undefined until the row is complete.
class RunPainter {
  public:
    RunPainter(const RunColours& colours, Ramps& ramps, const PixelRows& rows) noexcept
        : m_colours(colours), m_rows(rows), m_ramps(ramps) {
        FillRows(0, 1);
        StartRow(1);  // the first row remains blank
    }

    void Draw(RunCodeReader codes) noexcept {
        if (m_rows.fill) {
            DrawCodes<true>(codes);
        } else {
            DrawCodes<false>(codes);
        }
        KeepRest();
        FillRows(m_row + 1, m_rows.height);
    }

  private:
    /// @tparam may_overwrite  pixels after the position may be overwritten before they are drawn.
    template <bool may_overwrite>
    void DrawCodes(RunCodeReader codes) noexcept {
        do {
            DrawPlain<may_overwrite>(codes);
        } while (m_runs < kMaxLineRuns && DrawOther(codes.Next()));
    }
    // The fast path: draws colour and background runs up to the first other code, or up to the limit of runs.
    template <bool may_overwrite>
    void DrawPlain(RunCodeReader& codes) noexcept;
    // Draws any code; returns false at the end of the glyph.
    bool DrawOther(RunCode code) noexcept;
    void DrawMixed(RunCode code) noexcept;

    // Draws a run outside the fast path.
    void DrawRun(RunCode code, std::uint32_t pixel) noexcept {
        const int count = std::min(code.Count(), m_width - m_x);
        Repeat(At(m_x), count, pixel);
        m_x += count;
        m_stayed = 0;
    }
    // The pixel at the position; all zeros beyond the end of the line.
    Pixel Existing() const noexcept {
        Pixel existing{};
        if (m_x >= m_width) return existing;
        if (m_rows.fill && m_stayed == 0) return {*m_rows.fill, *m_rows.fill, *m_rows.fill, *m_rows.fill};
        std::memcpy(&existing, At(m_x), sizeof existing);
        return existing;
    }
    void StartRow(int row) noexcept {
        m_row = row;
        m_x = 0;
        m_stayed = 0;
        const bool in_bitmap = row < m_rows.height;
        m_line = in_bitmap ? m_rows.top + row * m_rows.stride : nullptr;
        m_width = in_bitmap ? m_rows.width : 0;
    }
    std::uint8_t* At(int x) const noexcept { return m_line + static_cast<std::size_t>(x) * kPixel; }
    // A pixel that the glyph doesn't cover.
    std::uint32_t Blank() const noexcept { return *m_rows.fill * 0x01010101U; }
    void FillRows(int from, int to) noexcept {
        if (!m_rows.fill) return;
        for (int row = from; row < std::min(to, m_rows.height); ++row)
            Repeat(m_rows.top + row * m_rows.stride, m_rows.width, Blank());
    }
    void FinishRow(std::uint32_t pixel) noexcept {
        Repeat(At(m_x), m_width - m_x, pixel);
        m_x = m_width;
    }
    // Completes the row with its content before the glyph.
    void KeepRest() noexcept {
        m_x = std::min(m_x + m_stayed, m_width);
        if (m_rows.fill) FinishRow(Blank());
    }

    std::uint32_t Background() const noexcept {
        return AsWord(m_colours.background.blue, m_colours.background.green, m_colours.background.red, 0);
    }
    [[gnu::noinline]] void Select(std::uint8_t index) noexcept {
        m_index = index;
        m_ramp = m_ramps.Of(index);
    }

    const RunColours m_colours;
    const PixelRows m_rows;
    Ramps& m_ramps;
    // The colour index of the last colour run, and its ramp.
    int m_index = -1;
    const std::uint32_t* m_ramp = nullptr;
    // The current row and its width in pixels; null and 0 below the last row.
    std::uint8_t* m_line = nullptr;
    int m_width = 0;
    int m_x = 0;
    // 1 when a stay code has left a pixel at the position, else 0.
    int m_stayed = 0;
    int m_row = 0;
    int m_lines = 0;
    // Runs of the current line.
    int m_runs = 0;
};

template <bool may_overwrite>
inline void RunPainter::DrawPlain(RunCodeReader& codes) noexcept {
    // At most as many codes as the line may still have runs, so that the loop needn't check the number of runs.
    const std::size_t limit = std::min(codes.Left(), static_cast<std::size_t>(kMaxLineRuns - m_runs));
    const std::uint32_t background = Background();
    const int width = m_width;
    int x = m_x, runs = m_runs;
    std::size_t drawn = 0;
    for (; drawn < limit; ++drawn) {
        const RunCode code = codes.At(drawn);
        std::uint32_t pixel = background;
        if (code.IsColourRun()) {
            if (code.ColourIndex() != m_index) [[unlikely]]
                Select(code.ColourIndex());
            pixel = m_ramp[code.Level()];
            ++runs;
        } else if (!code.IsBackgroundRun()) {
            break;
        }
        const int room = width - x, count = std::min(code.Count(), room);  // a run ends at the end of the line
        if (may_overwrite) {
            RepeatAtLeast(At(x), count, room, pixel);
        } else {
            Repeat(At(x), count, pixel);
        }
        x += count;
    }
    if (drawn != 0) m_stayed = 0;
    m_x = x;
    m_runs = runs;
    codes.Skip(drawn);
}

inline bool RunPainter::DrawOther(RunCode code) noexcept {
    if (code.EndsGlyph()) {
        if (m_x != 0) FinishRow(Background());
        return false;
    }
    switch (code.Operation()) {
        case RunOperation::kEndOfLine:
            FinishRow(0);
            StartRow(m_row + 1);
            m_runs = 0;
            return ++m_lines < kMaxGlyphLines;
        case RunOperation::kBackground:
            DrawRun(code, Background());
            return true;
        case RunOperation::kColour:
        case RunOperation::kBlended:
            DrawMixed(code);
            break;
    }
    return ++m_runs < kMaxLineRuns;
}

// Draws a code that mixes with the pixel at the position, or leaves one there for such a code.
inline void RunPainter::DrawMixed(RunCode code) noexcept {
    const RunColour colour = m_colours[code.ColourIndex()];
    unsigned red = colour.red, green = colour.green, blue = colour.blue, level = code.Level();
    if (code.Operation() == RunOperation::kBlended) {  // mixed once, with the first pixel of the run
        const Pixel existing = Existing();
        red = DivideBy255(level * red + (255 - level) * existing.red);
        green = DivideBy255(level * green + (255 - level) * existing.green);
        blue = DivideBy255(level * blue + (255 - level) * existing.blue);
        level += DivideBy255((255 - level) * existing.alpha);
    }
    red = std::min(red, level);
    green = std::min(green, level);
    blue = std::min(blue, level);
    if (code.Stay()) {  // not straightened, for a blended run that follows at the same position
        Repeat(At(m_x), std::min(1, m_width - m_x), AsWord(blue, green, red, level));
        m_stayed = 1;
        return;
    }
    using straighten::Colour;
    DrawRun(code, AsWord(Colour(blue, level), Colour(green, level), Colour(red, level), level));
}

}  // namespace

void DrawRunCodes(RunCodeReader codes, const RunColours& colours, const PixelRows& rows) noexcept {
    if (rows.width <= 0 || rows.height <= 0) return;
    Ramps ramps(colours);
    RunPainter(colours, ramps, rows).Draw(codes);
}

}  // namespace zel::font
