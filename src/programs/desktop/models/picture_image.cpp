#include "programs/desktop/models/picture_image.h"

#include <cstring>
#include <stdexcept>

#include "host/picture/png_reader.h"

namespace zel::desktop {

QImage ImageOf(const picture::Picture& picture) {
    QImage image(picture.width, picture.height, QImage::Format_RGBA8888);
    const auto bytes = static_cast<std::size_t>(picture.width) * 4;
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(image.scanLine(y), picture.rgba.data() + static_cast<std::size_t>(y) * bytes, bytes);
    return image;
}

QImage ImageOfPng(const std::string& png) {
    if (png.empty()) return {};
    try {
        return ImageOf(picture::DecodePng(png));
    } catch (const std::runtime_error&) {
        return {};
    }
}

double PixelRatio(QSize picture) {
    if (picture.width() != picture::kPictureWidth) return 1.0;
    return picture::VideoAspect(picture.height()).Ratio();
}

}  // namespace zel::desktop
