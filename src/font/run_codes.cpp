#include "font/run_codes.h"

#include <algorithm>
#include <cstring>

GlyphSize MeasureRunCodes(RunCodeReader codes) noexcept {
    int max_width = 0, line_width = 0, lines = 0, runs = 0;
    while (lines < kMaxGlyphLines && runs < kMaxLineRuns) {
        const RunCode code = codes.Next();
        if (code.EndsGlyph()) {
            if (runs != 0) {  // a last line without its end of line counts too
                ++lines;
                max_width = std::max(max_width, line_width);
            }
            break;
        }
        if (code.Operation() == RunOperation::kEndOfLine) {
            ++lines;
            runs = 0;
            max_width = std::max(max_width, line_width);
            line_width = 0;
        } else if (!code.Stay()) {
            line_width += code.Count();
            ++runs;
        }
    }
    return {(max_width + 3) / 4 * 4, lines + 2};
}

namespace {

struct Pixel {
    std::uint8_t blue, green, red, alpha;
};
static_assert(sizeof(Pixel) == 4);

// value / 255, rounded to the nearest; 255 is odd, so there is never a tie.
constexpr unsigned DivideBy255(unsigned value) noexcept {
    return (value + 127) / 255;
}

// colour * 255 / level, rounded half up: the straight colour of one that was multiplied by alpha.
constexpr std::uint8_t Straighten(unsigned colour, unsigned level) noexcept {
    return static_cast<std::uint8_t>((colour * 510 + level) / (2 * level));
}

// The drawing position and the counters of one glyph.
class RunPainter {
  public:
    RunPainter(const RunColours& colours, int width, int height, std::span<std::uint8_t> pixels) noexcept
        : m_colours(colours), m_width(width), m_height(height), m_pixels(pixels) {}

    bool Draw(RunCode code) noexcept;  // false when the glyph has ended

  private:
    void FillRest(Pixel pixel) noexcept { Fill(m_width - m_x, pixel); }
    void Fill(int count, Pixel pixel) noexcept;
    void DrawColour(RunCode code) noexcept;
    void Advance(int count) noexcept {
        m_x = std::min(m_x + count, m_width);
    }  // a run past the line's end is cut there
    bool Visible() const noexcept { return m_row < m_height && m_x < m_width; }
    std::uint8_t* At() noexcept {
        return m_pixels.data() +
               (static_cast<std::size_t>(m_row) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(m_x)) *
                   4;
    }
    Pixel Background() const noexcept {
        return {m_colours.background.blue, m_colours.background.green, m_colours.background.red, 0};
    }

    const RunColours& m_colours;
    const int m_width;
    const int m_height;
    const std::span<std::uint8_t> m_pixels;
    int m_x = 0;
    int m_row = 1;  // the first row stays blank
    int m_lines = 0;
    int m_runs = 0;
};

bool RunPainter::Draw(RunCode code) noexcept {
    if (code.EndsGlyph()) {
        if (m_x != 0) FillRest(Background());
        return false;
    }
    switch (code.Operation()) {
        case RunOperation::kEndOfLine:
            FillRest({0, 0, 0, 0});
            ++m_lines;
            ++m_row;
            m_x = m_runs = 0;
            break;
        case RunOperation::kBackground:
            Fill(code.Count(), Background());
            Advance(code.Count());
            break;
        case RunOperation::kColour:
        case RunOperation::kBlended:
            DrawColour(code);
            ++m_runs;
            break;
    }
    return m_lines < kMaxGlyphLines && m_runs < kMaxLineRuns;
}

// Writes up to `count` pixels from the position on, inside the line; the position stays.
void RunPainter::Fill(int count, Pixel pixel) noexcept {
    if (!Visible()) return;
    std::uint8_t* out = At();
    for (int i = std::min(count, m_width - m_x); i > 0; --i, out += 4) std::memcpy(out, &pixel, 4);
}

void RunPainter::DrawColour(RunCode code) noexcept {
    const RunColour colour = m_colours[code.ColourIndex()];
    unsigned red = colour.red, green = colour.green, blue = colour.blue, level = code.Level();
    if (code.Operation() == RunOperation::kBlended) {  // mixed once, with the pixel where the run starts
        Pixel below{};
        if (Visible()) std::memcpy(&below, At(), 4);
        red = DivideBy255(level * red + (255 - level) * below.red);
        green = DivideBy255(level * green + (255 - level) * below.green);
        blue = DivideBy255(level * blue + (255 - level) * below.blue);
        level += DivideBy255((255 - level) * below.alpha);
    }
    red = std::min(red, level);
    green = std::min(green, level);
    blue = std::min(blue, level);
    const auto byte = [](unsigned value) { return static_cast<std::uint8_t>(value); };
    if (code.Stay()) {  // left multiplied, for a blended run that follows in the same place
        Fill(1, {byte(blue), byte(green), byte(red), byte(level)});
        return;
    }
    Pixel pixel{};
    if (level != 0) pixel = {Straighten(blue, level), Straighten(green, level), Straighten(red, level), byte(level)};
    Fill(code.Count(), pixel);
    Advance(code.Count());
}

}  // namespace

void DrawRunCodes(RunCodeReader codes, const RunColours& colours, int width, int height,
                  std::span<std::uint8_t> pixels) noexcept {
    if (width <= 0 || height <= 0 ||
        pixels.size() / 4 / static_cast<std::size_t>(width) < static_cast<std::size_t>(height))
        return;
    RunPainter painter(colours, width, height, pixels);
    while (painter.Draw(codes.Next())) {
    }
}
