#pragma once

#include <QListView>

namespace zel::desktop {

/// The list of a library's thumbnails.
class ThumbnailList : public QListView {
    Q_OBJECT

  public:
    explicit ThumbnailList(QWidget* parent = nullptr);

  Q_SIGNALS:
    /// The user starts to drag the selected items.
    void dragged();
    /// The user presses Delete.
    void removeRequested();

  protected:
    void startDrag(Qt::DropActions actions) override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace zel::desktop
