#include "host/compare/picture_difference.h"

#include <algorithm>
#include <cstring>

#include "host/picture/composite.h"

namespace zel::compare {

namespace {

using picture::ConstPixelView;
using picture::Picture;
using picture::PixelBox;
using picture::Rgba;

constexpr Rgba kGround{16, 16, 20, 255};
constexpr Rgba kOnlyA{230, 159, 0, 255};
constexpr Rgba kOnlyB{60, 150, 255, 255};
constexpr Rgba kChanged{255, 255, 255, 255};
constexpr Rgba kFrame{150, 150, 150, 255};
/// Pixels between the differences and their frame.
constexpr int kFrameDistance = 4;

bool IsSame(Rgba a, Rgba b) noexcept {
    return a == b || (a.alpha == 0 && b.alpha == 0);
}

ConstPixelView ViewOf(const Picture* picture) {
    return picture != nullptr ? picture->View() : ConstPixelView({}, 0, 0);
}

Rgba PixelAt(std::span<const Rgba> row, int x) noexcept {
    return static_cast<std::size_t>(x) < row.size() ? row[static_cast<std::size_t>(x)] : Rgba{};
}

/// A grey of less than half of white, so that every mark is brighter.
Rgba Faded(Rgba pixel) noexcept {
    const unsigned grey = (pixel.red * 77U + pixel.green * 150U + pixel.blue * 29U) >> 8;
    const auto value = static_cast<std::uint8_t>(24 + grey * 96 / 255);
    return picture::Over({value, value, value, pixel.alpha}, kGround);
}

void DrawFrame(picture::PixelView view, const PixelBox& box) {
    const PixelBox frame{box.left - kFrameDistance, box.top - kFrameDistance, box.right + kFrameDistance,
                         box.bottom + kFrameDistance};
    picture::Fill(view.Part({frame.left, frame.top, frame.right, frame.top + 1}), kFrame);
    picture::Fill(view.Part({frame.left, frame.bottom - 1, frame.right, frame.bottom}), kFrame);
    picture::Fill(view.Part({frame.left, frame.top, frame.left + 1, frame.bottom}), kFrame);
    picture::Fill(view.Part({frame.right - 1, frame.top, frame.right, frame.bottom}), kFrame);
}

}  // namespace

PictureDifference ComparePictures(const Picture* a, const Picture* b) {
    const ConstPixelView view_a = ViewOf(a), view_b = ViewOf(b);
    PictureDifference difference{
        .width_a = view_a.Width(), .height_a = view_a.Height(), .width_b = view_b.Width(), .height_b = view_b.Height()};
    const int width = std::max(difference.width_a, difference.width_b);
    const int height = std::max(difference.height_a, difference.height_b);
    PixelBox box{width, height, 0, 0};
    for (int y = 0; y < height; ++y) {
        const auto row_a = view_a.Row(y), row_b = view_b.Row(y);
        if (row_a.size() == row_b.size() && !row_a.empty() &&
            std::memcmp(row_a.data(), row_b.data(), row_a.size_bytes()) == 0)
            continue;
        for (int x = 0; x < width; ++x) {
            if (IsSame(PixelAt(row_a, x), PixelAt(row_b, x))) continue;
            ++difference.pixels;
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), y + 1};
        }
    }
    if (difference.pixels != 0) difference.box = box;
    return difference;
}

Picture MarkedPicture(const Picture* a, const Picture* b, const PictureDifference& difference) {
    const ConstPixelView view_a = ViewOf(a), view_b = ViewOf(b);
    Picture marked =
        picture::ClearPicture(std::max(view_a.Width(), view_b.Width()), std::max(view_a.Height(), view_b.Height()));
    const picture::PixelView view = marked.View();
    for (int y = 0; y < marked.height; ++y) {
        const auto row_a = view_a.Row(y), row_b = view_b.Row(y);
        const auto row = view.Row(y);
        for (int x = 0; x < marked.width; ++x) {
            const Rgba one = PixelAt(row_a, x), other = PixelAt(row_b, x);
            row[static_cast<std::size_t>(x)] = IsSame(one, other) ? Faded(one)
                                               : other.alpha == 0 ? kOnlyA
                                               : one.alpha == 0   ? kOnlyB
                                                                  : kChanged;
        }
    }
    if (!difference.box.IsEmpty()) DrawFrame(view, difference.box);
    return marked;
}

}  // namespace zel::compare
