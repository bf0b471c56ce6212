#pragma once

#include <QColor>
#include <QWidget>
#include <vector>

namespace zel::desktop {

/// The colours of a palette: a line for each set. Entries can be walked through by the arrow keys.
class PaletteView : public QWidget {
    Q_OBJECT

  public:
    explicit PaletteView(QWidget* parent = nullptr);

    void Show(std::vector<std::vector<QColor>> sets);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {160, 48}; }

  Q_SIGNALS:
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
    QPoint m_cell{-1, -1};  // x: entry, y: set
};

}  // namespace zel::desktop
