#include "host/picture/composite.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

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

void BlendBgra(const std::uint8_t* source, std::span<Rgba> pixels) noexcept {
    for (Rgba& pixel : pixels) {
        if (source[3] != 0) pixel = Over({source[2], source[1], source[0], source[3]}, pixel);
        source += 4;
    }
}

/// Four pixels, which the compiler processes in one vector register where there is one. The alpha is the top byte of
/// each.
using Four [[gnu::vector_size(16)]] = std::uint32_t;
constexpr std::size_t kFour = 4;
constexpr std::uint32_t kAlphaBits = 0xFF000000, kRedAndBlue = 0x00FF00FF;

Four LoadFour(const void* pixels) noexcept {
    Four four;
    std::memcpy(&four, pixels, sizeof four);
    return four;
}

bool AllClear(Four pixels) noexcept {
    const Four alpha = pixels & kAlphaBits;
    std::uint64_t halves[2];
    std::memcpy(halves, &alpha, sizeof alpha);
    return (halves[0] | halves[1]) == 0;
}

/// Blends a row of the module's pixels. Most of a glyph is drawn on clear pixels and only copied, with red and blue
/// swapped. A branch for each pixel would be mispredicted too often.
void BlendBgraRow(const std::uint8_t* source, std::span<Rgba> pixels) noexcept {
    for (; pixels.size() >= kFour; pixels = pixels.subspan(kFour), source += 4 * kFour) {
        const Four above = LoadFour(source);
        const Four below = LoadFour(pixels.data());
        if (!AllClear(below)) {
            BlendBgra(source, pixels.first(kFour));
            continue;
        }
        const Four swapped = above >> 16 | above << 16;
        const Four straight = (above & ~kRedAndBlue) | (swapped & kRedAndBlue);
        const Four is_clear = (above & kAlphaBits) == 0;
        const Four blended = (straight & ~is_clear) | (below & is_clear);
        std::memcpy(static_cast<void*>(pixels.data()), &blended, sizeof blended);
    }
    BlendBgra(source, pixels);
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
    ForEachRow(view, x, y, bitmap.width, bitmap.height, [&](int row, int column, std::span<Rgba> pixels) {
        BlendBgraRow(At(bitmap.bgra.data(), bitmap.width * 4, bitmap.height - 1 - row, column * 4), pixels);
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
