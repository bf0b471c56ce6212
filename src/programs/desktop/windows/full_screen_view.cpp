#include "programs/desktop/windows/full_screen_view.h"

#include <QKeyEvent>

namespace zel::desktop {

namespace {

/// 1 or -1 for the keys that go to another message, else 0.
int StepOf(int key) {
    switch (key) {
        case Qt::Key_Right:
        case Qt::Key_Down:
        case Qt::Key_PageDown:
            return 1;
        case Qt::Key_Left:
        case Qt::Key_Up:
        case Qt::Key_PageUp:
        case Qt::Key_Backspace:
            return -1;
        default:
            return 0;
    }
}

}  // namespace

FullScreenView::FullScreenView(QWidget* window) : PictureView(window) {
    setObjectName(QStringLiteral("full_screen"));
    setWindowFlags(Qt::Window);
    setWindowTitle(window->windowTitle());
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    black.setColor(QPalette::Text, Qt::white);
    setPalette(black);
}

void FullScreenView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F11) {
        hide();
    } else if (const int step = StepOf(event->key()); step != 0) {
        Q_EMIT stepped(step);
    } else {
        PictureView::keyPressEvent(event);
    }
}

}  // namespace zel::desktop
