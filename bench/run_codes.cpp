// Run-coded glyphs: drawing and measuring.
#include "files/run_codes.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include <benchmark/benchmark.h>

#include "module/contract/zel_font.h"
#include "scratch_disk.h"

using namespace zel;

namespace {

constexpr unsigned kCode = 65;

/// A font with one glyph, in memory, and a bitmap of its size.
class GlyphInMemory {
  public:
    explicit GlyphInMemory(const files::RunCodes& codes)
        : m_codes(codes), m_encoding(files::RunCodeBytes(codes)), m_directory(kDirectoryEntries) {
        m_header.encoding_size = static_cast<std::uint32_t>(m_encoding.size());
        m_directory[kCode].glyph_kind = 2;
        m_slot.font_header = &m_header;
        m_slot.char_directory = m_directory.data();
        m_slot.encoding_data = m_encoding.data();
        int top = 0;
        const CRect rect = font.GetMFRect(Address(), 0, kCode, top, nullptr);
        m_pixels.resize(static_cast<std::size_t>(rect.Width()) * static_cast<std::size_t>(rect.Height()));
        dib.dsBm.bmBits = m_pixels.data();
        dib.dsBmih.biWidth = rect.Width();
        dib.dsBmih.biHeight = rect.Height();
    }
    FontAddress Address() const { return reinterpret_cast<FontAddress>(&m_slot); }
    const files::RunCodes& Codes() const { return m_codes; }
    const files::Bytes& Encoding() const { return m_encoding; }
    std::vector<std::uint32_t>& Pixels() { return m_pixels; }

    CZelFont font;
    DIBSECTION dib{};

  private:
    files::RunCodes m_codes;
    files::Bytes m_encoding;
    tag_font_header m_header{};
    std::vector<tag_char_entry> m_directory;
    tag_font_memory m_slot;
    std::vector<std::uint32_t> m_pixels;
};

GlyphInMemory Smooth() {
    return GlyphInMemory(SmoothGlyph(48, 60));
}

GlyphInMemory LongRuns() {
    files::RunCodes codes;
    for (unsigned line = 0; line < 200; ++line) {
        for (unsigned run = 0; run < 10; ++run)
            codes.push_back(run % 2 == 0 ? files::ColourRun(1, 255, 32) : files::BackgroundRun(32));
        codes.push_back(files::EndOfLine());
    }
    codes.push_back(files::EndOfGlyph());
    return GlyphInMemory(codes);
}

void Draw(benchmark::State& state, GlyphInMemory (*make)()) {
    GlyphInMemory glyph = make();
    for (auto _ : state) {
        glyph.font.BuildMFTagData(glyph.Address(), &glyph.dib, 0, kCode, -1);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(glyph.Codes().size()));
}

std::uint8_t Cut(double value) {
    return static_cast<std::uint8_t>(value);
}

/// The formulas of the format: fills a buffer, draws pixel by pixel in doubles, and flips the rows.
void DrawByFormula(const GlyphInMemory& glyph) {
    const int width = glyph.dib.dsBmih.biWidth, height = glyph.dib.dsBmih.biHeight;
    const std::size_t row_size = static_cast<std::size_t>(width) * 4,
                      size = row_size * static_cast<std::size_t>(height);
    std::vector<std::uint8_t> work(size, static_cast<std::uint8_t>(glyph.font.m_BackColor >> 16));
    std::uint8_t* out = work.data() + row_size;
    const std::uint8_t* code = glyph.Encoding().data();
    const COLORREF colours[] = {0, glyph.font.m_FaceColor, glyph.font.m_EdgeColor, glyph.font.m_BackColor};
    const auto put = [&out](double b, double g, double r, double a) {
        for (const double part : {b, g, r, a}) *out++ = Cut(part);
    };
    const auto pad = [&](int x, int to) {
        for (; x < to; ++x) put(0, 0, 0, 0);
    };
    for (int x = 0;; code += 4) {
        const std::uint32_t v = static_cast<std::uint32_t>(code[0]) << 24 | static_cast<std::uint32_t>(code[1]) << 16 |
                                static_cast<std::uint32_t>(code[2]) << 8 | code[3];
        if (v == 0) break;
        const int count = 32 - static_cast<int>(v >> 3 & 31);
        if ((v & 3) == 3) {
            pad(x, width);
            x = 0;
        } else if ((v & 3) == 0) {
            pad(x, x + count);
            x += count;
        } else {
            x += count;
            const COLORREF colour = colours[v >> 16 & 3];
            const unsigned level = v >> 8 & 0xFF;
            const double r = std::min(colour & 0xFF, level), g = std::min(colour >> 8 & 0xFF, level),
                         b = std::min(colour >> 16 & 0xFF, level);
            for (int i = 0; i < count; ++i)
                put(b * 255.0 / level + 0.5, g * 255.0 / level + 0.5, r * 255.0 / level + 0.5, level);
        }
    }
    auto* bits = static_cast<std::uint8_t*>(glyph.dib.dsBm.bmBits);
    for (std::size_t at = 0; at < size; at += row_size)
        std::memcpy(bits + at, work.data() + size - row_size - at, row_size);
}

void Formula(benchmark::State& state, GlyphInMemory (*make)()) {
    const GlyphInMemory glyph = make();
    for (auto _ : state) {
        DrawByFormula(glyph);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(glyph.Codes().size()));
}

void Filled(benchmark::State& state, GlyphInMemory (*make)()) {
    GlyphInMemory glyph = make();
    std::uint32_t pixel = 0xFFFFFFFF;
    for (auto _ : state) {
        benchmark::DoNotOptimize(pixel);
        std::fill(glyph.Pixels().begin(), glyph.Pixels().end(), pixel);
        benchmark::ClobberMemory();
    }
}

BENCHMARK_CAPTURE(Draw, smooth, Smooth)->Name("run_codes/smooth/module");
BENCHMARK_CAPTURE(Formula, smooth, Smooth)->Name("run_codes/smooth/formula");
BENCHMARK_CAPTURE(Draw, long_runs, LongRuns)->Name("run_codes/runs_of_32/module");
BENCHMARK_CAPTURE(Filled, long_runs, LongRuns)->Name("run_codes/runs_of_32/fill");

void Measure(benchmark::State& state) {
    GlyphInMemory glyph = Smooth();
    int top = 0;
    for (auto _ : state) benchmark::DoNotOptimize(glyph.font.GetMFRect(glyph.Address(), 0, kCode, top, nullptr));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(glyph.Codes().size()));
}
BENCHMARK(Measure)->Name("measure/module");

/// One pass over all words of the glyph.
void ReadWords(benchmark::State& state) {
    const GlyphInMemory glyph = Smooth();
    for (auto _ : state) {
        const std::uint8_t* word = glyph.Encoding().data();
        std::uint32_t sum = 0, value = 0;
        benchmark::DoNotOptimize(word);
        do {
            std::memcpy(&value, word, sizeof value);
            value = __builtin_bswap32(value);
            word += sizeof value;
            sum += value;
        } while (value != 0);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(glyph.Codes().size()));
}
BENCHMARK(ReadWords)->Name("measure/pass");

}  // namespace
