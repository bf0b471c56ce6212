// Stored glyphs: the conversion of their pixels and the row flip.
#include <algorithm>
#include <cstring>
#include <vector>

#include <benchmark/benchmark.h>

#include "module/font/format/stored_glyph.h"
#include "scratch_disk.h"

#ifdef ZELTRANS_BENCH_QIMAGE
#include <QImage>
#endif

using namespace zel;

namespace {

struct Glyph {
    std::size_t width, height;
    files::Bytes pixels;
};

/// Every pair of alpha and colour, once in each channel: 256 by 256 pixels.
const Glyph& AllPairs() {
    static const Glyph glyph = [] {
        Glyph all{256, 256, {}};
        for (unsigned n = 0; n < 65536; ++n) {
            const unsigned mixed =
                n * 40503U & 0xFFFFU;  // an odd factor permutes the numbers, so that neighbours differ
            const unsigned colour = mixed & 0xFF;
            for (const unsigned byte : {mixed >> 8, colour, colour ^ 0x55U, 255 - colour})
                all.pixels.push_back(static_cast<std::uint8_t>(byte));
        }
        return all;
    }();
    return glyph;
}

const Glyph& Letter() {
    static const Glyph glyph{40, 30, SmoothPixels(40, 30)};
    return glyph;
}

// The formula of the format, in doubles.
void StraightenByFormula(std::uint8_t* pixel, std::size_t count) {
    for (; count > 0; --count, pixel += 4) {
        const std::uint8_t alpha = pixel[0];
        if (alpha == 0) {
            std::memset(pixel, 0, 4);
            continue;
        }
        for (int i = 1; i < 4; ++i) {
            const std::uint8_t colour = std::min(pixel[i], alpha);
            pixel[i - 1] = static_cast<std::uint8_t>(colour * 255.0 / alpha + 0.5);
        }
        pixel[3] = alpha;
    }
}

void FlipRows(const Glyph& glyph, const std::vector<std::uint8_t>& rows, std::vector<std::uint8_t>& bitmap) {
    const std::size_t size = glyph.width * 4;
    for (std::size_t row = 0; row < glyph.height; ++row)
        std::memcpy(&bitmap[row * size], &rows[(glyph.height - 1 - row) * size], size);
}

/// @param convert  writes the glyph to `bitmap`; may use `work`, which has the same size.
template <class Convert>
void Run(benchmark::State& state, const Glyph& glyph, Convert convert) {
    std::vector<std::uint8_t> work(glyph.pixels.size()), bitmap(glyph.pixels.size());
    for (auto _ : state) {
        convert(work, bitmap);
        benchmark::DoNotOptimize(bitmap.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(glyph.width * glyph.height));
}

using Bytes = std::vector<std::uint8_t>;

void Module(benchmark::State& state, const Glyph& (*get)()) {
    const Glyph& glyph = get();
    Run(state, glyph, [&glyph](Bytes& /*work*/, Bytes& bitmap) {
        font::StraightenRowsReversed(glyph.pixels, glyph.width * 4, glyph.height, bitmap);
    });
}

// The conversion is in place, so each iteration copies the pixels first, which takes 1 % of its time.
void Formula(benchmark::State& state, const Glyph& (*get)()) {
    const Glyph& glyph = get();
    Run(state, glyph, [&glyph](Bytes& work, Bytes& bitmap) {
        std::memcpy(work.data(), glyph.pixels.data(), work.size());
        StraightenByFormula(work.data(), work.size() / 4);
        FlipRows(glyph, work, bitmap);
    });
}

void Copied(benchmark::State& state, const Glyph& (*get)()) {
    const Glyph& glyph = get();
    Run(state, glyph,
        [&glyph](Bytes& /*work*/, Bytes& bitmap) { std::memcpy(bitmap.data(), glyph.pixels.data(), bitmap.size()); });
}

BENCHMARK_CAPTURE(Module, all_pairs, AllPairs)->Name("stored/pairs/module");
BENCHMARK_CAPTURE(Formula, all_pairs, AllPairs)->Name("stored/pairs/formula");
BENCHMARK_CAPTURE(Copied, all_pairs, AllPairs)->Name("stored/pairs/memcpy");
BENCHMARK_CAPTURE(Module, letter, Letter)->Name("stored/letter/module");
BENCHMARK_CAPTURE(Formula, letter, Letter)->Name("stored/letter/formula");
BENCHMARK_CAPTURE(Copied, letter, Letter)->Name("stored/letter/memcpy");

#ifdef ZELTRANS_BENCH_QIMAGE
// Qt expects alpha last.
void Qt(benchmark::State& state, const Glyph& (*get)()) {
    Glyph glyph = get();
    for (std::size_t i = 0; i < glyph.pixels.size(); i += 4)
        std::rotate(&glyph.pixels[i], &glyph.pixels[i + 1], glyph.pixels.data() + i + 4);
    Run(state, glyph, [&glyph](Bytes& work, Bytes& bitmap) {
        std::memcpy(work.data(), glyph.pixels.data(), work.size());
        QImage image(work.data(), static_cast<int>(glyph.width), static_cast<int>(glyph.height),
                     QImage::Format_ARGB32_Premultiplied);
        image.convertTo(QImage::Format_ARGB32);
        FlipRows(glyph, work, bitmap);
    });
}
BENCHMARK_CAPTURE(Qt, all_pairs, AllPairs)->Name("stored/pairs/qimage");
BENCHMARK_CAPTURE(Qt, letter, Letter)->Name("stored/letter/qimage");
#endif

}  // namespace
