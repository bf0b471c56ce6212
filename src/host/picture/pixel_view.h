#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <type_traits>

#include "host/picture/pixel.h"

namespace zel::picture {

/// Pixels of a rectangle: columns from `left` up to but not including `right`, rows from `top` up to but not including
/// `bottom`.
struct PixelBox {
    int left = 0, top = 0, right = 0, bottom = 0;

    constexpr int Width() const noexcept { return right - left; }
    constexpr int Height() const noexcept { return bottom - top; }
    constexpr bool IsEmpty() const noexcept { return left >= right || top >= bottom; }
};

/// The pixels that are in both boxes; may be empty.
constexpr PixelBox Intersection(const PixelBox& a, const PixelBox& b) noexcept {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

/// Size in bytes of width x height pixels; 0 if either is negative.
constexpr std::size_t PixelBytes(int width, int height) noexcept {
    return static_cast<std::size_t>(std::max(width, 0)) * static_cast<std::size_t>(std::max(height, 0)) * sizeof(Rgba);
}

/// A rectangle of pixels that it does not own, top row first. Passed by value; the caller keeps the pixels alive.
template <typename Pixel>
class BasicPixelView {
    using Byte = std::conditional_t<std::is_const_v<Pixel>, const std::uint8_t, std::uint8_t>;

  public:
    /// @param rgba  width * height pixels.
    /// @throws std::out_of_range when there are fewer.
    BasicPixelView(std::span<Byte> rgba, int width, int height)
        : m_pixels(reinterpret_cast<Pixel*>(rgba.data())),
          m_row_step(static_cast<std::size_t>(std::max(width, 0))),
          m_width(std::max(width, 0)),
          m_height(std::max(height, 0)) {
        if (rgba.size() < PixelBytes(width, height)) throw std::out_of_range("a picture has too few pixels");
    }

    operator BasicPixelView<const Pixel>() const noexcept requires(!std::is_const_v<Pixel>) {
        return {m_pixels, m_row_step, m_width, m_height};
    }

    int Width() const noexcept { return m_width; }
    int Height() const noexcept { return m_height; }
    PixelBox Bounds() const noexcept { return {0, 0, m_width, m_height}; }

    /// The pixels of a row, from left to right; none for a row outside the view.
    std::span<Pixel> Row(int y) const noexcept {
        if (y < 0 || y >= m_height) return {};
        return {m_pixels + static_cast<std::size_t>(y) * m_row_step, static_cast<std::size_t>(m_width)};
    }

    /// The part of a box that is in the view. Its upper left pixel is (0, 0) of the result.
    BasicPixelView Part(const PixelBox& box) const noexcept {
        const PixelBox part = Intersection(box, Bounds());
        if (part.IsEmpty()) return {m_pixels, m_row_step, 0, 0};
        return {Row(part.top).data() + part.left, m_row_step, part.Width(), part.Height()};
    }

  private:
    template <typename>
    friend class BasicPixelView;

    BasicPixelView(Pixel* pixels, std::size_t row_step, int width, int height) noexcept
        : m_pixels(pixels), m_row_step(row_step), m_width(width), m_height(height) {}

    Pixel* m_pixels;
    /// Distance in pixels from the beginning of a row to that of the next one.
    std::size_t m_row_step;
    int m_width;
    int m_height;
};

using PixelView = BasicPixelView<Rgba>;
using ConstPixelView = BasicPixelView<const Rgba>;

}  // namespace zel::picture
