// Run codes: measured, and drawn.
#include <algorithm>
#include <vector>

#include "fuzz_target.h"
#include "module/font/format/draw_run_codes.h"
#include "module/font/format/measure_run_codes.h"

using namespace zel;

namespace {

using fuzz::Require;

constexpr font::RunColour kColours[] = {{1, 2, 3}, {255, 255, 255}, {0, 200, 0}, {9, 9, 9}};
constexpr font::RunColours kSet{kColours, {0, 0, 0}};
constexpr int kMaxPixels = 1 << 18;

std::vector<std::uint8_t> Draw(fuzz::Input codes, font::GlyphSize size) {
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 4);
    std::vector<std::uint8_t> filled(pixels.size(), 0xEE);
    font::DrawRunCodes(font::RunCodeReader(codes, 0), kSet, {pixels.data(), size.width * 4, size.width, size.height});
    font::DrawRunCodes(font::RunCodeReader(codes, 0), kSet,
                       {filled.data(), size.width * 4, size.width, size.height, 0});
    Require(filled == pixels, "a fill equals existing pixels");
    return pixels;
}

void CheckCodes(fuzz::Input codes) {
    const font::GlyphSize size = font::MeasureRunCodes(font::RunCodeReader(codes, 0));
    for (const font::MeasurePath& path : font::MeasurePaths())
        Require(size == path.measure(font::RunCodeReader(codes, 0)), path.name);
    Require(size.width >= 0 && size.width % 4 == 0 && size.height >= 2 && size.height <= font::kMaxGlyphLines + 2,
            "a size");
    if (size.width * size.height > kMaxPixels) return;
    const std::vector<std::uint8_t> pixels = Draw(codes, size);
    const auto first_row = std::span(pixels).first(static_cast<std::size_t>(size.width) * 4);
    Require(std::ranges::all_of(first_row, [](std::uint8_t byte) { return byte == 0; }), "the first row remains blank");
    Draw(codes, {std::max(size.width - 3, 1), size.height / 2});  // into a bitmap that is too small
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CheckCodes({data, size});
    return 0;
}
