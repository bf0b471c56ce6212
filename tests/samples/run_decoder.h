#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "samples/run_codes.h"

namespace zel::samples_test {

/// A pixel as a reader draws it: straight colour and alpha.
struct Drawn {
    int blue = 0, green = 0, red = 0, alpha = 0;
    bool operator==(const Drawn&) const = default;
};

struct Rgb {
    int red = 0, green = 0, blue = 0;
};

/// Draws run codes line by line onto empty pixels; colours[i] is the colour of index i. A line grows with its runs.
class RunDecoder {
  public:
    RunDecoder(const samples::RunCodes& codes, const std::array<Rgb, 4>& colours) : m_colours(colours) {
        for (const std::uint32_t code : codes) {
            if (code == 0) return;
            Step(code);
        }
    }
    const std::vector<std::vector<Drawn>>& Lines() const { return m_lines; }
    /// Transparent beyond a line's end.
    Drawn At(unsigned x, unsigned y) const { return x < m_lines[y].size() ? m_lines[y][x] : Drawn{}; }
    unsigned MostRunsInALine() const { return m_most_runs; }

  private:
    static int Rounded(double value) { return static_cast<int>(std::lround(value)); }
    static int Blend(int level, int over, int under) { return Rounded((level * over + (255 - level) * under) / 255.0); }

    void Step(std::uint32_t code) {
        const unsigned operation = code & 3, count = 32 - (code >> 3 & 31);
        if (operation == 3) {
            m_lines.push_back(std::exchange(m_line, {}));
            m_most_runs = std::max(m_most_runs, std::exchange(m_runs, 0U));
            return;
        }
        ++m_runs;
        if (operation == 0) return m_line.resize(m_line.size() + count);
        Drawn under = m_pixel;
        const Rgb colour = m_colours.at(code >> 16 & 255);
        Drawn paint{colour.blue, colour.green, colour.red, static_cast<int>(code >> 8 & 255)};
        if (operation == 2) {
            const int level = paint.alpha;
            paint = {Blend(level, paint.blue, under.blue), Blend(level, paint.green, under.green),
                     Blend(level, paint.red, under.red), level + Rounded((255 - level) / 255.0 * under.alpha)};
        }
        for (int* part : {&paint.blue, &paint.green, &paint.red}) *part = std::min(*part, paint.alpha);
        if (code >> 31 != 0) {
            m_pixel = paint;
            return;
        }
        m_pixel = {};
        for (int* part : {&paint.blue, &paint.green, &paint.red}) {
            *part = paint.alpha == 0 ? 0 : Rounded(*part * 255.0 / paint.alpha);
        }
        m_line.insert(m_line.end(), count, paint);
    }

    std::array<Rgb, 4> m_colours;
    std::vector<std::vector<Drawn>> m_lines;
    std::vector<Drawn> m_line;
    /// The current pixel, as set by stay codes.
    Drawn m_pixel;
    unsigned m_runs = 0, m_most_runs = 0;
};

}  // namespace zel::samples_test
