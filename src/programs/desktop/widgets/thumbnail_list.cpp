#include "programs/desktop/widgets/thumbnail_list.h"

#include <QKeyEvent>

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
