#pragma once

#include <QColor>
#include <QWidget>
#include <vector>

namespace zel::desktop {

/// The colours of a palette, one row for each colour set. The arrow keys and the pointer select an entry.
class PaletteView : public QWidget {
    Q_OBJECT

  public:
    explicit PaletteView(QWidget* parent = nullptr);

    void Show(std::vector<std::vector<QColor>> sets);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {160, 48}; }

  Q_SIGNALS:
    /// Describes the selected entry; empty for none.
    void pointedAt(const QString& name);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QRect CellAt(int set, int entry) const;
    void PointAt(QPoint cell);

    std::vector<std::vector<QColor>> m_sets;
    /// The selected entry (x) and its set (y); -1 for none.
    QPoint m_cell{-1, -1};
};

}  // namespace zel::desktop
