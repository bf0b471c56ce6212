#include "programs/desktop/widgets/thumbnail_list.h"

#include <QKeyEvent>
#include <QResizeEvent>
#include <utility>

namespace zel::desktop {

ThumbnailList::ThumbnailList(QWidget* parent) : QListView(parent) {
    setFlow(QListView::LeftToRight);
    setWrapping(true);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setSpacing(2);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setDragDropMode(QAbstractItemView::DragOnly);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void ThumbnailList::dataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) {
    // Not that of QListView, which would place all items for each thumbnail that arrives.
    QAbstractItemView::dataChanged(first, last, roles);
}

/// A window is often resized in several steps, and the items are placed anew later.
void ThumbnailList::resizeEvent(QResizeEvent* event) {
    const QRect before({}, event->oldSize());
    const bool in_sight = m_returns || before.intersects(visualRect(currentIndex()));
    QListView::resizeEvent(event);
    if (!in_sight || std::exchange(m_returns, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_returns = false;
            scrollTo(currentIndex());
        },
        Qt::QueuedConnection);
}

void ThumbnailList::startDrag(Qt::DropActions /*actions*/) {
    Q_EMIT dragged();
}

void ThumbnailList::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Delete)) {
        Q_EMIT removeRequested();
    } else {
        QListView::keyPressEvent(event);
    }
}

}  // namespace zel::desktop
