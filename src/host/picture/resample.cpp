#include "host/picture/resample.h"

#include <new>

#include <stb_image_resize.h>

namespace zel::picture {

namespace {

/// Distance in pixels of the result from the picture's first edge to the result's, which gives both the same centre.
float Shift(int size, double scale, int result) noexcept {
    return static_cast<float>((size * scale - result) / 2);
}

}  // namespace

Picture Resampled(const Picture& picture, int width, int height, double x_scale, double y_scale) {
    constexpr int kChannels = 4, kAlpha = 3, kFlags = 0;
    Picture result = ClearPicture(width, height);
    const int done = stbir_resize_subpixel(
        picture.rgba.data(), picture.width, picture.height, 0, result.rgba.data(), width, height, 0, STBIR_TYPE_UINT8,
        kChannels, kAlpha, kFlags, STBIR_EDGE_CLAMP, STBIR_EDGE_CLAMP, STBIR_FILTER_CATMULLROM, STBIR_FILTER_CATMULLROM,
        STBIR_COLORSPACE_LINEAR, nullptr, static_cast<float>(x_scale), static_cast<float>(y_scale),
        Shift(picture.width, x_scale, width), Shift(picture.height, y_scale, height));
    if (done == 0) throw std::bad_alloc();
    return result;
}

Picture Stretched(const Picture& picture, int width, int height) {
    return Resampled(picture, width, height, static_cast<double>(width) / picture.width,
                     static_cast<double>(height) / picture.height);
}

}  // namespace zel::picture
