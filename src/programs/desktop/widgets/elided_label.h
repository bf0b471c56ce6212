#pragma once

#include <QLabel>

namespace zel::desktop {

/// One line of plain text that may be wider than the label: it is cut then, and a tool tip shows all of it. The label
/// can become as narrow as a few letters, so that a long text does not make its window wider.
class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void SetLine(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QSize SizeFor(int text_width) const;
};

}  // namespace zel::desktop
