#include "font/run_codes.h"

#include <algorithm>
#include <cstring>

#include "font/straighten.h"

namespace {

struct Pixel {
    std::uint8_t blue, green, red, alpha;
};
static_assert(sizeof(Pixel) == 4);

// value / 255, rounded to the nearest; 255 is odd, so there is never a tie.
constexpr unsigned DivideBy255(unsigned value) noexcept {
    return (value + 127) / 255;
}

// Writes a pixel `count` times, in steps of four, the last of which reaches back over the one before.
inline void Repeat(std::uint8_t* out, int count, std::uint32_t pixel) noexcept {
    if (count < 4) {
        for (; count > 0; --count, out += sizeof pixel) std::memcpy(out, &pixel, sizeof pixel);
        return;
    }
    const std::uint32_t four[] = {pixel, pixel, pixel, pixel};
    std::uint8_t* const last = out + static_cast<std::size_t>(count) * sizeof pixel - sizeof four;
    for (; out < last; out += sizeof four) std::memcpy(out, four, sizeof four);
    std::memcpy(last, four, sizeof four);
}

// What a colour run lays down at each level: the colour limited to the level and straightened, which is what becomes of
// a stored pixel. Most codes of a glyph name one or two colours, so that this pays after a few dozen of them.
class Ramps {
  public:
    explicit Ramps(const RunColours& colours) noexcept : m_colours(colours) {}

    std::uint32_t At(std::uint8_t index, std::uint8_t level) noexcept {
        const std::size_t ramp = std::min<std::size_t>(index, kSize - 1);  // all colours without an entry are black
        if ((m_made >> ramp & 1) == 0) Make(ramp);
        return m_pixels[ramp][level];
    }

  private:
    static constexpr std::size_t kSize = RunColours::kMost + 1;

    void Make(std::size_t ramp) noexcept {
        const RunColour colour = m_colours[static_cast<std::uint8_t>(ramp)];
        const std::uint32_t stored = static_cast<std::uint32_t>(colour.blue) << 8 |
                                     static_cast<std::uint32_t>(colour.green) << 16 |
                                     static_cast<std::uint32_t>(colour.red) << 24;
        for (std::uint32_t level = 0; level < 256; ++level) m_pixels[ramp][level] = stored | level;
        auto* const bytes = reinterpret_cast<std::uint8_t*>(m_pixels[ramp]);
        straighten::Paths().front().convert(bytes, bytes, 256);
        m_made |= std::uint64_t{1} << ramp;
    }

    const RunColours m_colours;
    std::uint64_t m_made = 0;
    std::uint32_t m_pixels[kSize][256];  // a row of it is set when it is made
};

// The drawing position and the counters of one glyph.
class RunPainter {
  public:
    RunPainter(const RunColours& colours, Ramps& ramps, const PixelRows& rows) noexcept
        : m_colours(colours), m_rows(rows), m_ramps(ramps) {
        StartRow(0);
        StartRow(1);  // the first row stays blank
    }
    ~RunPainter() {
        while (m_row + 1 < m_rows.height) StartRow(m_row + 1);
    }
    RunPainter(const RunPainter&) = delete;
    RunPainter& operator=(const RunPainter&) = delete;

    bool Draw(RunCode code) noexcept;  // false when the glyph has ended

  private:
    void StartRow(int row) noexcept {
        m_row = row;
        m_x = 0;
        m_line = row < m_rows.height ? m_rows.top + row * m_rows.stride : nullptr;
        if (m_line != nullptr && m_rows.fill)
            std::memset(m_line, *m_rows.fill, static_cast<std::size_t>(m_rows.width) * sizeof(Pixel));
    }
    // Writes up to `count` pixels from the position on, inside the line; the position stays.
    void Fill(int count, std::uint32_t pixel) noexcept {
        if (m_line != nullptr) Repeat(At(), std::min(count, m_rows.width - m_x), pixel);
    }
    void FillRest(std::uint32_t pixel) noexcept { Fill(m_rows.width - m_x, pixel); }
    void DrawRun(RunCode code, std::uint32_t pixel) noexcept {
        Fill(code.Count(), pixel);
        Advance(code.Count());
    }
    void DrawMixed(RunCode code) noexcept;
    void Advance(int count) noexcept {
        m_x = std::min(m_x + count, m_rows.width);
    }  // a run past the line's end is cut there
    std::uint8_t* At() const noexcept { return m_line + static_cast<std::size_t>(m_x) * 4; }
    static std::uint32_t AsWord(unsigned blue, unsigned green, unsigned red, unsigned alpha) noexcept {
        return blue | green << 8 | red << 16 | alpha << 24;
    }
    std::uint32_t Background() const noexcept {
        return AsWord(m_colours.background.blue, m_colours.background.green, m_colours.background.red, 0);
    }

    const RunColours m_colours;
    const PixelRows m_rows;
    Ramps& m_ramps;                  // apart from this object, whose own members then stay in registers
    std::uint8_t* m_line = nullptr;  // null below the last row
    int m_x = 0;
    int m_row = 0;
    int m_lines = 0;
    int m_runs = 0;
};

inline bool RunPainter::Draw(RunCode code) noexcept {
    if (code.EndsGlyph()) {
        if (m_x != 0) FillRest(Background());
        return false;
    }
    switch (code.Operation()) {
        case RunOperation::kEndOfLine:
            FillRest(0);
            StartRow(m_row + 1);
            m_runs = 0;
            return ++m_lines < kMaxGlyphLines;
        case RunOperation::kBackground:
            DrawRun(code, Background());
            return true;
        case RunOperation::kColour:
            if (!code.Stay()) {
                DrawRun(code, m_ramps.At(code.ColourIndex(), code.Level()));
                break;
            }
            [[fallthrough]];
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
        Pixel below{};
        if (m_line != nullptr && m_x < m_rows.width) std::memcpy(&below, At(), sizeof below);
        red = DivideBy255(level * red + (255 - level) * below.red);
        green = DivideBy255(level * green + (255 - level) * below.green);
        blue = DivideBy255(level * blue + (255 - level) * below.blue);
        level += DivideBy255((255 - level) * below.alpha);
    }
    red = std::min(red, level);
    green = std::min(green, level);
    blue = std::min(blue, level);
    if (code.Stay()) {  // left multiplied, for a blended run that follows in the same place
        Fill(1, AsWord(blue, green, red, level));
        return;
    }
    using straighten::Colour;
    DrawRun(code, AsWord(Colour(blue, level), Colour(green, level), Colour(red, level), level));
}

}  // namespace

void DrawRunCodes(RunCodeReader codes, const RunColours& colours, const PixelRows& rows) noexcept {
    if (rows.width <= 0 || rows.height <= 0) return;
    Ramps ramps(colours);
    RunPainter painter(colours, ramps, rows);
    while (painter.Draw(codes.Next())) {
    }
}
