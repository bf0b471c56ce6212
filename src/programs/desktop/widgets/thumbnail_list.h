#pragma once

#include <QListView>

namespace zel::desktop {

/// The list of a library's thumbnails. When it is resized, a visible current item stays visible.
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
    /// Places no item anew, since no item's size depends on its data.
    void dataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) override;
    void resizeEvent(QResizeEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    /// The list will scroll to its current item.
    bool m_returns = false;
};

}  // namespace zel::desktop
