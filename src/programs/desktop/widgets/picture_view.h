#pragma once

#include <QAbstractScrollArea>
#include <QBrush>
#include <QImage>
#include <optional>

#include "programs/desktop/models/message_details.h"

namespace zel::desktop {

/// Shows a picture with its alpha over a ground, and what lies where in it.
class PictureView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    enum class Ground { kCheckerboard, kColour };

    explicit PictureView(QWidget* parent = nullptr);

    /// @param picture  straight alpha; a null image shows `words` instead.
    void Show(const QImage& picture, const MessageDetails& details, const QString& words);

    /// Screen pixels for a line of the picture; the picture is as large as the view while it fits itself.
    double Zoom() const noexcept { return m_zoom; }
    bool FitsItself() const noexcept { return m_fits; }
    void SetGround(Ground ground, const QColor& colour = {});
    /// The picture as it is painted, without what lies behind and above it.
    const QImage& Shown() const noexcept { return m_shown; }
    /// Marks a part of the picture; an empty one marks nothing.
    void Mark(const QRect& part);

  public Q_SLOTS:
    void ZoomIn();
    void ZoomOut();
    void Fit();
    void ShowActualPixels();
    void SetPixelAspect(bool on);
    void SetKeyAlone(bool on);
    void SetFields(bool on);
    void SetSafeAreas(bool on);

  Q_SIGNALS:
    /// The character that the pointer or the arrow keys are at; empty when there is none.
    void pointedAt(const QString& name);
    void zoomed(double zoom);
    void dragged();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QSize viewportSizeHint() const override { return {720, 540}; }

  private:
    void ZoomTo(double zoom, QPointF around);
    void Place();
    QSizeF SizeAt(double zoom) const;
    QPointF Origin() const;
    QTransform ToView() const;
    void PointAt(int character);
    void PaintOverlays(QPainter& painter) const;
    void PaintFields(QPainter& painter) const;
    void PaintSafeAreas(QPainter& painter) const;
    void PaintWords(QPainter& painter) const;
    double Aspect() const;

    QImage m_picture;  // straight alpha
    QImage m_shown;    // premultiplied, or the key alone
    MessageDetails m_details;
    QString m_words;
    double m_zoom = 1.0;
    bool m_fits = true;
    bool m_aspect = true, m_key = false, m_fields = false, m_safe = false;
    QBrush m_ground;
    Ground m_kind = Ground::kCheckerboard;
    QRect m_mark;
    int m_pointed = -1;
    std::optional<QPoint> m_pressed;
};

}  // namespace zel::desktop
