#include "host/export/premultiplied.h"

namespace zel::exporter {

picture::Picture Premultiplied(picture::Picture picture) {
    const picture::PixelView view = picture.View();
    for (int y = 0; y < view.Height(); ++y) {
        for (picture::Rgba& pixel : view.Row(y)) {
            const unsigned alpha = pixel.alpha;
            const auto multiplied = [alpha](unsigned colour) {
                return static_cast<std::uint8_t>((colour * alpha + 127) / 255);
            };
            pixel = {multiplied(pixel.red), multiplied(pixel.green), multiplied(pixel.blue), pixel.alpha};
        }
    }
    return picture;
}

}  // namespace zel::exporter
