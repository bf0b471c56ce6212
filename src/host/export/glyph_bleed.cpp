#include "host/export/glyph_bleed.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace zel::exporter {

namespace {

using picture::Rgba;

/// Which pixels have a colour that others can take over.
using Mask = std::vector<std::uint8_t>;

/// The mean colour of the neighbours that are in the mask; empty without one.
std::optional<Rgba> MeanOfNeighbours(picture::ConstPixelView view, const Mask& mask, int x, int y) {
    unsigned red = 0, green = 0, blue = 0, count = 0;
    for (int v = std::max(y - 1, 0); v <= std::min(y + 1, view.Height() - 1); ++v) {
        const auto row = view.Row(v);
        for (int u = std::max(x - 1, 0); u <= std::min(x + 1, view.Width() - 1); ++u) {
            const auto column = static_cast<std::size_t>(u);
            if (mask[static_cast<std::size_t>(v) * row.size() + column] == 0) continue;
            red += row[column].red;
            green += row[column].green;
            blue += row[column].blue;
            ++count;
        }
    }
    if (count == 0) return {};
    const auto mean = [count](unsigned sum) { return static_cast<std::uint8_t>((sum + count / 2) / count); };
    return Rgba{mean(red), mean(green), mean(blue), 0};
}

bool HasDrawnNear(const std::vector<std::uint8_t>& drawn_rows, int y) {
    const int last = static_cast<int>(drawn_rows.size()) - 1;
    for (int v = std::max(y - 1, 0); v <= std::min(y + 1, last); ++v) {
        if (drawn_rows[static_cast<std::size_t>(v)] != 0) return true;
    }
    return false;
}

}  // namespace

picture::Picture WithBleed(picture::Picture picture) {
    const picture::PixelView view = picture.View();
    const auto width = static_cast<std::size_t>(view.Width());
    Mask mask(width * static_cast<std::size_t>(view.Height()));
    std::vector<std::uint8_t> drawn_rows(static_cast<std::size_t>(view.Height()));
    for (int y = 0; y < view.Height(); ++y) {
        const auto row = view.Row(y);
        for (std::size_t x = 0; x < width; ++x) mask[static_cast<std::size_t>(y) * width + x] = row[x].alpha != 0;
        drawn_rows[static_cast<std::size_t>(y)] = std::ranges::any_of(row, [](Rgba pixel) { return pixel.alpha != 0; });
    }
    std::vector<std::pair<std::size_t, Rgba>> taken;
    for (int ring = 0; ring < kBleed; ++ring) {
        taken.clear();
        for (int y = 0; y < view.Height(); ++y) {
            if (!HasDrawnNear(drawn_rows, y)) continue;
            for (std::size_t x = 0; x < width; ++x) {
                const std::size_t at = static_cast<std::size_t>(y) * width + x;
                if (mask[at] != 0) continue;
                if (const auto mean = MeanOfNeighbours(std::as_const(picture).View(), mask, static_cast<int>(x), y))
                    taken.emplace_back(at, *mean);
            }
        }
        for (const auto& [at, colour] : taken) {
            const std::size_t y = at / width;
            view.Row(static_cast<int>(y))[at % width] = colour;
            mask[at] = 1;
            drawn_rows[y] = 1;
        }
    }
    return picture;
}

}  // namespace zel::exporter
