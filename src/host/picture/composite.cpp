#include "host/picture/composite.h"

#include <algorithm>
#include <cstddef>

#include "host/picture/bgra_row.h"

namespace zel::picture {

namespace {

/// Calls `blend` for each row of a box at (x, y) that is in the view.
/// @param blend  receives the box's own row and first column, and the pixels of the view from there on.
template <typename BlendRow>
void ForEachRow(PixelView view, int x, int y, int width, int height, BlendRow blend) noexcept {
    const PixelBox part = Intersection({x, y, x + width, y + height}, view.Bounds());
    if (part.IsEmpty()) return;
    const PixelView pixels = view.Part(part);
    for (int row = 0; row < pixels.Height(); ++row) blend(part.top - y + row, part.left - x, pixels.Row(row));
}

/// Address of a unit of the source, `width` units a row.
template <typename Unit>
const Unit* At(const Unit* source, int width, int row, int column) noexcept {
    return source + static_cast<std::ptrdiff_t>(row) * width + column;
}

/// The processor doesn't expect the next row of a glyph, which is far away in memory. It needs the time of several rows
/// to bring it.
constexpr int kRowsAhead = 6;

/// Begins to load pixels that will be written.
void Prefetch(std::span<const Rgba> pixels) noexcept {
    constexpr std::size_t kLine = 64 / sizeof(Rgba);
    if (pixels.empty()) return;
    for (std::size_t n = 0; n < pixels.size(); n += kLine) __builtin_prefetch(&pixels[n], 1);
    __builtin_prefetch(&pixels.back(), 1);
}

}  // namespace

void Fill(PixelView view, Rgba colour) noexcept {
    for (int y = 0; y < view.Height(); ++y) std::ranges::fill(view.Row(y), colour);
}

void FillCheckerboard(PixelView view, int square, Rgba first, Rgba second) noexcept {
    const auto run = static_cast<std::size_t>(square);
    for (int y = 0; y < view.Height(); ++y) {
        bool is_first = y / square % 2 == 0;
        for (auto row = view.Row(y); !row.empty(); row = row.subspan(std::min(run, row.size()))) {
            std::ranges::fill(row.first(std::min(run, row.size())), is_first ? first : second);
            is_first = !is_first;
        }
    }
}

void Blend(PixelView view, Rgba colour) noexcept {
    if (colour.alpha == 255) {
        Fill(view, colour);
        return;
    }
    for (int y = 0; y < view.Height(); ++y) {
        for (Rgba& pixel : view.Row(y)) pixel = Over(colour, pixel);
    }
}

void BlendPixels(PixelView view, int x, int y, ConstPixelView source) noexcept {
    ForEachRow(view, x, y, source.Width(), source.Height(), [&](int row, int column, std::span<Rgba> pixels) {
        const Rgba* above = source.Row(row).data() + column;
        for (Rgba& pixel : pixels) pixel = Over(*above++, pixel);
    });
}

void BlendBitmap(PixelView view, int x, int y, const ModuleBitmap& bitmap) noexcept {
    const auto blend = BgraRowPaths().front().blend;
    ForEachRow(view, x, y, bitmap.width, bitmap.height, [&](int row, int column, std::span<Rgba> pixels) {
        const auto later = view.Row(y + row + kRowsAhead);
        if (!later.empty()) Prefetch(later.subspan(static_cast<std::size_t>(x + column), pixels.size()));
        blend(At(bitmap.bgra.data(), bitmap.width * 4, bitmap.height - 1 - row, column * 4), pixels);
    });
}

void BlendCoverage(PixelView view, int x, int baseline, const Coverage& coverage, COLORREF colour) noexcept {
    const int left = x + coverage.left, top = baseline - coverage.top;
    ForEachRow(view, left, top, coverage.width, coverage.height, [&](int row, int column, std::span<Rgba> pixels) {
        const std::uint8_t* alpha = At(coverage.bytes.data(), coverage.width, row, column);
        for (Rgba& pixel : pixels) {
            if (*alpha != 0) pixel = Over(RgbaOf(colour, *alpha), pixel);
            ++alpha;
        }
    });
}

}  // namespace zel::picture
