#include "module/font/format/run_codes.h"

#include <algorithm>
#include <cstring>

#include "module/font/format/straighten.h"

namespace zel::font {

namespace {

struct Pixel {
    std::uint8_t blue, green, red, alpha;
};
static_assert(sizeof(Pixel) == 4);

// value / 255, rounded to the nearest; 255 is odd, so there is never a tie.
constexpr unsigned DivideBy255(unsigned value) noexcept {
    return (value + 127) / 255;
}

constexpr std::size_t kPixel = sizeof(Pixel);
constexpr int kStep = 8;

inline void PutEight(std::uint8_t* out, std::uint32_t pixel) noexcept {
    const std::uint32_t four[] = {pixel, pixel, pixel, pixel};
    std::memcpy(out, four, sizeof four);
    std::memcpy(out + sizeof four, four, sizeof four);
}

// Writes a pixel `count` times and nothing else.
inline void Repeat(std::uint8_t* out, int count, std::uint32_t pixel) noexcept {
    for (; count >= kStep; count -= kStep, out += kStep * kPixel) PutEight(out, pixel);
    for (; count > 0; --count, out += kPixel) std::memcpy(out, &pixel, kPixel);
}

// Writes a pixel `count` times, perhaps a few times more up to `room`: a short run costs no branch for its length.
inline void RepeatLoosely(std::uint8_t* out, int count, int room, std::uint32_t pixel) noexcept {
    if (room < kStep) return Repeat(out, count, pixel);
    PutEight(out, pixel);
    if (count <= kStep) return;
    std::uint8_t* const last = out + static_cast<std::size_t>(count - kStep) * kPixel;
    for (out += kStep * kPixel; out < last; out += kStep * kPixel) PutEight(out, pixel);
    PutEight(last, pixel);
}

constexpr std::uint32_t AsWord(unsigned blue, unsigned green, unsigned red, unsigned alpha) noexcept {
    return blue | green << 8 | red << 16 | alpha << 24;
}

// What a colour run lays down at each level: the colour limited to the level and straightened, which is what becomes of
// a stored pixel. Most codes of a glyph name one or two colours, so that this pays after a few dozen of them.
class Ramps {
  public:
    using Ramp = std::uint32_t[256];  // pixels by level

    explicit Ramps(const RunColours& colours) noexcept : m_colours(colours) {}

    const Ramp& Of(std::uint8_t index) noexcept {
        const std::size_t ramp = std::min<std::size_t>(index, kSize - 1);  // all colours without an entry are black
        if ((m_made >> ramp & 1) == 0) Make(ramp);
        return m_pixels[ramp];
    }

  private:
    static constexpr std::size_t kSize = RunColours::kMost + 1;

    void Make(std::size_t ramp) noexcept {
        const RunColour colour = m_colours[static_cast<std::uint8_t>(ramp)];
        const std::uint32_t stored = AsWord(0, colour.blue, colour.green, colour.red);
        for (std::uint32_t level = 0; level < 256; ++level) m_pixels[ramp][level] = stored | level;
        auto* const bytes = reinterpret_cast<std::uint8_t*>(m_pixels[ramp]);
        straighten::Paths().front().Convert(bytes, bytes, 256);
        m_made |= std::uint64_t{1} << ramp;
    }

    const RunColours m_colours;
    std::uint64_t m_made = 0;
    Ramp m_pixels[kSize];  // each is set when it is made
};

// The drawing position and the counters of one glyph. The position's row holds the glyph up to the position, and at it
// what a stay code left there; behind that lies anything, until the row is done.
class RunPainter {
  public:
    RunPainter(const RunColours& colours, Ramps& ramps, const PixelRows& rows) noexcept
        : m_colours(colours), m_rows(rows), m_ramps(ramps) {
        FillRows(0, 1);
        StartRow(1);  // the first row stays blank
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
    /// @param loosely  a pixel behind the position may be anything until it is drawn.
    template <bool loosely>
    void DrawCodes(RunCodeReader codes) noexcept {
        do {
            DrawPlain<loosely>(codes);
        } while (m_runs < kMaxLineRuns && DrawOther(codes.Next()));
    }
    // Draws colour and background runs up to the first other code, or some of them.
    template <bool loosely>
    void DrawPlain(RunCodeReader& codes) noexcept;
    // Any code; false when the glyph has ended.
    bool DrawOther(RunCode code) noexcept;
    void DrawMixed(RunCode code) noexcept;

    // A run outside the fast road.
    void DrawRun(RunCode code, std::uint32_t pixel) noexcept {
        const int count = std::min(code.Count(), m_width - m_x);
        Repeat(At(m_x), count, pixel);
        m_x += count;
        m_stayed = 0;
    }
    // The pixel at the position; nothing beyond the line's end.
    Pixel Below() const noexcept {
        Pixel below{};
        if (m_x >= m_width) return below;
        if (m_rows.fill && m_stayed == 0) return {*m_rows.fill, *m_rows.fill, *m_rows.fill, *m_rows.fill};
        std::memcpy(&below, At(m_x), sizeof below);
        return below;
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
    // What pixels hold that the glyph doesn't reach.
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
    // Ends the row with what stood there before the glyph.
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
    int m_index = -1;  // the colour of the last colour run, and its ramp
    const std::uint32_t* m_ramp = nullptr;
    std::uint8_t* m_line = nullptr;
    int m_width = 0;  // of the row; 0 below the last one
    int m_x = 0;
    int m_stayed = 0;  // 1 when a stay code has left a pixel at the position
    int m_row = 0;
    int m_lines = 0;
    int m_runs = 0;
};

template <bool loosely>
inline void RunPainter::DrawPlain(RunCodeReader& codes) noexcept {
    // No more codes than the line can still have of runs, so that the loop needn't look at their count.
    const std::size_t most = std::min(codes.Left(), static_cast<std::size_t>(kMaxLineRuns - m_runs));
    const std::uint32_t background = Background();
    const int width = m_width;
    int x = m_x, runs = m_runs;
    std::size_t drawn = 0;
    for (; drawn < most; ++drawn) {
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
        const int room = width - x, count = std::min(code.Count(), room);  // a run past the line's end is cut there
        if (loosely) {
            RepeatLoosely(At(x), count, room, pixel);
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

// A code that mixes with the pixel at the position, or leaves one there for such a code.
inline void RunPainter::DrawMixed(RunCode code) noexcept {
    const RunColour colour = m_colours[code.ColourIndex()];
    unsigned red = colour.red, green = colour.green, blue = colour.blue, level = code.Level();
    if (code.Operation() == RunOperation::kBlended) {  // mixed once, with the pixel where the run starts
        const Pixel below = Below();
        red = DivideBy255(level * red + (255 - level) * below.red);
        green = DivideBy255(level * green + (255 - level) * below.green);
        blue = DivideBy255(level * blue + (255 - level) * below.blue);
        level += DivideBy255((255 - level) * below.alpha);
    }
    red = std::min(red, level);
    green = std::min(green, level);
    blue = std::min(blue, level);
    if (code.Stay()) {  // left multiplied, for a blended run that follows in the same place
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
