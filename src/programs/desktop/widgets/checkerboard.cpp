#include "programs/desktop/widgets/checkerboard.h"

#include <QImage>
#include <QPainter>

namespace zel::desktop {

QBrush Checkerboard() {
    constexpr int kSquare = 8;
    QImage tile(2 * kSquare, 2 * kSquare, QImage::Format_RGB32);
    tile.fill(QColor(0x5C, 0x5C, 0x5C));
    QPainter painter(&tile);
    for (const int at : {0, kSquare}) painter.fillRect(at, at, kSquare, kSquare, QColor(0x72, 0x72, 0x72));
    painter.end();
    return QBrush(tile);
}

}  // namespace zel::desktop
