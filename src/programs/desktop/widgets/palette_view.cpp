#include "programs/desktop/widgets/palette_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "programs/desktop/widgets/readable_colours.h"

namespace zel::desktop {

namespace {

constexpr int kColumns = 32, kRows = 8, kMaxCell = 18;

}  // namespace

PaletteView::PaletteView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("palette"));
    setAccessibleName(tr("Palette"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void PaletteView::Show(std::vector<std::vector<QColor>> sets) {
    m_sets = std::move(sets);
    PointAt({-1, -1});
    update();
}

QSize PaletteView::sizeHint() const {
    return {kColumns * 11, kRows * 11};
}

QRect PaletteView::CellAt(int set, int entry) const {
    const int side = std::clamp(std::min((width() - 8) / kColumns, (height() - 8) / kRows), 4, kMaxCell);
    return {4 + entry * side, 4 + set * side, side - 1, side - 1};
}

void PaletteView::PointAt(QPoint cell) {
    const bool exists = cell.y() >= 0 && cell.y() < static_cast<int>(m_sets.size()) && cell.x() >= 0 &&
                        cell.x() < static_cast<int>(m_sets[static_cast<std::size_t>(cell.y())].size());
    m_cell = exists ? cell : QPoint(-1, -1);
    QString name;
    if (exists) {
        const QColor colour = m_sets[static_cast<std::size_t>(cell.y())][static_cast<std::size_t>(cell.x())];
        name = tr("colour set %1, entry %2: %3").arg(cell.y()).arg(cell.x()).arg(colour.name().toUpper());
    }
    setToolTip(name);
    Q_EMIT pointedAt(name);
    update();
}

void PaletteView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (m_sets.empty()) {
        painter.setPen(HintColour(palette()));
        painter.drawText(rect(), Qt::AlignCenter, tr("No palette"));
    }
    for (std::size_t set = 0; set < m_sets.size(); ++set) {
        for (std::size_t entry = 0; entry < m_sets[set].size(); ++entry)
            painter.fillRect(CellAt(static_cast<int>(set), static_cast<int>(entry)), m_sets[set][entry]);
    }
    if (m_cell.x() < 0) return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(CellAt(m_cell.y(), m_cell.x()).adjusted(-1, -1, 1, 1));
}

void PaletteView::mouseMoveEvent(QMouseEvent* event) {
    const QRect first = CellAt(0, 0);
    const QPoint point = event->pos() - first.topLeft();
    const int side = first.width() + 1;
    PointAt(point.x() < 0 || point.y() < 0 ? QPoint(-1, -1) : QPoint(point.x() / side, point.y() / side));
}

void PaletteView::leaveEvent(QEvent* /*event*/) {
    if (!hasFocus()) PointAt({-1, -1});
}

void PaletteView::keyPressEvent(QKeyEvent* event) {
    const int across = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
    const int down = event->key() == Qt::Key_Down ? 1 : event->key() == Qt::Key_Up ? -1 : 0;
    if (across == 0 && down == 0) return QWidget::keyPressEvent(event);
    const QPoint from(std::max(m_cell.x(), 0), std::max(m_cell.y(), 0));
    PointAt({std::clamp(from.x() + across, 0, kColumns - 1), std::clamp(from.y() + down, 0, kRows - 1)});
}

}  // namespace zel::desktop
