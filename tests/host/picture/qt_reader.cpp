#include "qt_reader.h"

#include <cstddef>

#include <QtGui/QImage>

namespace zel::test {

std::vector<std::uint8_t> DecodedByQt(const std::string& file) {
    const QImage image = QImage::fromData(reinterpret_cast<const uchar*>(file.data()), static_cast<int>(file.size()))
                             .convertToFormat(QImage::Format_RGBA8888);
    std::vector<std::uint8_t> bytes;
    for (int y = 0; y < image.height(); ++y) {
        const uchar* const row = image.constScanLine(y);
        bytes.insert(bytes.end(), row, row + static_cast<std::ptrdiff_t>(image.width()) * 4);
    }
    return bytes;
}

}  // namespace zel::test
