#include "programs/desktop/widgets/thumbnail_delegate.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>

#include "programs/desktop/models/library_model.h"
#include "programs/desktop/widgets/checkerboard.h"
#include "programs/desktop/widgets/readable_colours.h"

namespace zel::desktop {

namespace {

constexpr int kCellMargin = 6;

void DrawWarningIcon(QPainter& painter, const QRect& frame) {
    constexpr int kSize = 16;
    const QIcon icon = QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    icon.paint(&painter, QRect(frame.right() - kSize - 3, frame.top() + 4, kSize, kSize));
}

}  // namespace

ThumbnailDelegate::ThumbnailDelegate(QObject* parent) : QStyledItemDelegate(parent), m_background(Checkerboard()) {}

QSize ThumbnailDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    if (index.data(LibraryModel::kIsHeading).toBool()) {
        const auto* const list = qobject_cast<const QAbstractScrollArea*>(option.widget);
        const int line = list != nullptr ? list->viewport()->width() - 2 * kCellMargin : kThumbnail.width();
        return {line, option.fontMetrics.height() + 2 * kCellMargin};
    }
    return {kThumbnail.width() + 2 * kCellMargin,
            kThumbnail.height() + 2 * option.fontMetrics.height() + 3 * kCellMargin};
}

void ThumbnailDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    if (index.data(LibraryModel::kIsHeading).toBool()) return PaintHeading(*painter, option, index);
    QStyleOptionViewItem item = option;
    QStyle& style = *QApplication::style();
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, option.widget);

    const QRect inner = option.rect.adjusted(kCellMargin, kCellMargin, -kCellMargin, -kCellMargin);
    const QRect frame(inner.left() + (inner.width() - kThumbnail.width()) / 2, inner.top(), kThumbnail.width(),
                      kThumbnail.height());
    painter->save();
    PaintThumbnail(*painter, frame, index);
    const QRect texts(inner.left(), frame.bottom() + kCellMargin, inner.width(), 2 * option.fontMetrics.height());
    PaintTexts(*painter, texts, option, index);
    painter->restore();
    if ((option.state & QStyle::State_HasFocus) != 0) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        style.drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
    }
}

/// The name of a disk and a line.
void ThumbnailDelegate::PaintHeading(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) {
    const QRect area = option.rect.adjusted(kCellMargin, 0, -kCellMargin, 0);
    QFont bold = option.font;
    bold.setBold(true);
    const QString name =
        QFontMetrics(bold).elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideMiddle, area.width());
    painter.save();
    painter.setFont(bold);
    painter.setPen(option.palette.color(QPalette::Active, QPalette::Text));
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, name);
    painter.setPen(HintColour(option.palette));
    const int end = area.left() + QFontMetrics(bold).horizontalAdvance(name) + kCellMargin;
    if (end < area.right()) painter.drawLine(end, area.center().y(), area.right(), area.center().y());
    painter.restore();
}

void ThumbnailDelegate::PaintThumbnail(QPainter& painter, const QRect& frame, const QModelIndex& index) const {
    const auto thumbnail = index.data(LibraryModel::kThumbnail).value<QImage>();
    QRect target(QPoint(), thumbnail.isNull() ? kThumbnail : thumbnail.size().scaled(kThumbnail, Qt::KeepAspectRatio));
    target.moveCenter(frame.center());
    painter.setBrushOrigin(target.topLeft());
    painter.fillRect(target, m_background);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!thumbnail.isNull()) painter.drawImage(target, thumbnail);
    if (index.data(LibraryModel::kWarnings).toInt() != 0) DrawWarningIcon(painter, frame);
}

void ThumbnailDelegate::PaintTexts(QPainter& painter, const QRect& area, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) {
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    const auto group = (option.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
    painter.setPen(option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    QRect line(area.topLeft(), QSize(area.width(), option.fontMetrics.height()));
    const auto draw = [&](const QString& text, Qt::TextElideMode mode) {
        painter.drawText(line, Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextSingleLine,
                         option.fontMetrics.elidedText(text, mode, line.width()));
        line.translate(0, line.height());
    };
    QFont bold = option.font;
    bold.setBold(true);
    painter.setFont(bold);
    draw(index.data(Qt::DisplayRole).toString(), Qt::ElideMiddle);
    painter.setFont(option.font);
    draw(index.data(LibraryModel::kText).toString(), Qt::ElideRight);
}

}  // namespace zel::desktop
