#pragma once

#include <QBrush>
#include <QStyledItemDelegate>

namespace zel::desktop {

/// Draws a recording of the library: its thumbnail on a checkerboard, its title, and the beginning of its text. Draws a
/// heading over the whole width of the list.
class ThumbnailDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    static constexpr QSize kThumbnail{144, 108};

    explicit ThumbnailDelegate(QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    static void PaintHeading(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index);
    void PaintThumbnail(QPainter& painter, const QRect& frame, const QModelIndex& index) const;
    static void PaintTexts(QPainter& painter, const QRect& area, const QStyleOptionViewItem& option,
                           const QModelIndex& index);

    QBrush m_background;
};

}  // namespace zel::desktop
