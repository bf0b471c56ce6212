#include "programs/desktop/widgets/program_icon.h"

#include <QPainter>
#include <QPixmap>

namespace zel::desktop {

namespace {

/// Draws the icon in a square of 16 units.
void Draw(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x5C, 0x5C, 0x5C));
    painter.drawRoundedRect(QRectF(0, 1.5, 16, 13), 1.5, 1.5);
    for (int row = 0; row < 2; ++row) {
        for (int column = row % 2; column < 4; column += 2)
            painter.fillRect(QRectF(2 + 3 * column, 2.5 + 3 * row, 3, 3), QColor(0x72, 0x72, 0x72));
    }
    painter.fillRect(QRectF(2, 9, 12, 4), QColor(0x1E, 0x3C, 0x78));
    painter.fillRect(QRectF(2, 9, 1.2, 4), QColor(0xE0, 0xA8, 0x30));
    painter.fillRect(QRectF(4.2, 9.8, 6, 1), Qt::white);
    painter.fillRect(QRectF(4.2, 11.5, 8, 0.8), QColor(0xF0, 0xD8, 0x80));
}

}  // namespace

QIcon ProgramIcon() {
    QIcon icon;
    for (const int side : {16, 32, 48, 64, 128}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(side / 16.0, side / 16.0);
        Draw(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace zel::desktop
