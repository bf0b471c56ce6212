#include "host/export/resample.h"

#include <new>

#include <stb_image_resize.h>

#include "host/export/frame.h"

namespace zel::exporter {

namespace {

/// Width of a pixel of a frame, its height being 1.
constexpr double PixelAspect(int lines) noexcept {
    return lines == 576 ? 12.0 / 11 : 10.0 / 11;
}

/// How far the result begins right of the picture's first pixel, so that both have the same middle.
float Shift(int size, double scale, int result) noexcept {
    return static_cast<float>((size * scale - result) / 2);
}

}  // namespace

picture::Picture Resampled(const picture::Picture& picture, int width, int height, double x_scale, double y_scale) {
    constexpr int kChannels = 4, kAlpha = 3, kFlags = 0;
    picture::Picture result{width, height, {}};
    result.rgba.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * kChannels);
    const int done = stbir_resize_subpixel(
        picture.rgba.data(), picture.width, picture.height, 0, result.rgba.data(), width, height, 0, STBIR_TYPE_UINT8,
        kChannels, kAlpha, kFlags, STBIR_EDGE_CLAMP, STBIR_EDGE_CLAMP, STBIR_FILTER_CATMULLROM, STBIR_FILTER_CATMULLROM,
        STBIR_COLORSPACE_LINEAR, nullptr, static_cast<float>(x_scale), static_cast<float>(y_scale),
        Shift(picture.width, x_scale, width), Shift(picture.height, y_scale, height));
    if (done == 0) throw std::bad_alloc();
    return result;
}

picture::Picture WithSquarePixels(const picture::Picture& frame) {
    return Resampled(frame, SquareWidth(frame.height), frame.height, PixelAspect(frame.height), 1);
}

picture::Picture Thumbnail(const picture::Picture& frame) {
    const double x_scale = static_cast<double>(kThumbnailWidth) / frame.width;
    const double y_scale = x_scale / PixelAspect(frame.height);
    const int height = static_cast<int>(frame.height * y_scale + 0.5);
    return Resampled(frame, kThumbnailWidth, height, x_scale, y_scale);
}

}  // namespace zel::exporter
