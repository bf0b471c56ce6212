#pragma once

#include <QAbstractScrollArea>
#include <QBrush>
#include <QImage>
#include <QPointer>
#include <optional>

#include "programs/desktop/models/message_details.h"

namespace zel::desktop {

/// Shows a picture with its alpha on a background, and the characters and tab fields in it. The wheel zooms; the middle
/// button, or the left one with the space bar, moves the picture.
class PictureView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    enum class Background { kCheckerboard, kColour };

    explicit PictureView(QWidget* parent = nullptr);

    /// @param picture  straight alpha. For a null image, `message` is shown instead.
    void Show(const QImage& picture, const MessageDetails& details, const QString& message);

    /// Device pixels per pixel of the picture's height.
    double Zoom() const noexcept { return m_zoom; }
    /// The picture is scaled to the size of the view.
    bool IsFitted() const noexcept { return m_fitted; }
    void SetBackground(Background background, const QColor& colour = {});
    /// The picture as painted, without background and overlays.
    const QImage& Shown() const noexcept { return m_shown; }
    /// Outlines a part of the picture; an empty one removes the outline.
    void Mark(const QRect& part);
    const QRect& Marked() const noexcept { return m_mark; }

    void ZoomIn();
    void ZoomOut();
    void Fit();
    void ShowActualPixels();
    void SetPixelAspect(bool on);
    void SetKeyOnly(bool on);
    void SetFields(bool on);
    void SetSafeAreas(bool on);
    /// @param action  part of width and height, in percent, that every screen shows.
    /// @param title   part within which titles are placed; smaller than `action`.
    void SetSafeSizes(int action, int title);
    /// Shows its picture as another view does, but at its own zoom.
    void TakeSettings(const PictureView& other);
    /// Takes zoom and scrolling from another view.
    void Follow(const PictureView& other);

    /// A double click on a tab field activates it instead of changing the zoom.
    void SetFieldsEditable(bool on) { m_editable = on; }
    /// A part of the picture in coordinates of viewport().
    QRectF ShownPlace(const QRect& part) const;
    /// The tab field of the selected character, an index in MessageDetails::fields; -1 for none.
    int PointedField() const;
    /// Shows a widget at a part of the picture, as large as that part, but no smaller than its own hint; it follows
    /// zoom and scrolling. The widget is a child of viewport(). Null ends it and leaves the widget as it is.
    void SetOverlay(QWidget* widget, const QRect& part = {});

  Q_SIGNALS:
    /// Describes the character selected by the pointer or the arrow keys; empty for none.
    void pointedAt(const QString& description);
    void zoomed(double zoom);
    /// The picture was scrolled.
    void scrolled();
    /// The user starts to drag the picture.
    void dragged();
    /// The user opens a tab field, by an index in MessageDetails::fields.
    void fieldActivated(int field);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QSize viewportSizeHint() const override { return {720, 540}; }

  private:
    void ZoomTo(double zoom, QPointF around);
    void UpdateLayout();
    void PlaceOverlay();
    QPoint InPicture(QPointF position) const;
    QSizeF SizeAt(double zoom) const;
    QPointF Origin() const;
    QTransform ToView() const;
    void PointAt(int character);
    void SetSpaceDown(bool down);
    void PanTo(QPoint position);
    void PaintOverlays(QPainter& painter) const;
    void PaintFields(QPainter& painter) const;
    void PaintSafeAreas(QPainter& painter) const;
    void PaintMessage(QPainter& painter) const;
    double Aspect() const;

    /// Straight alpha.
    QImage m_picture;
    /// Premultiplied, or the key only.
    QImage m_shown;
    MessageDetails m_details;
    QString m_message;
    double m_zoom = 1.0;
    bool m_fitted = true;
    bool m_aspect = true, m_key = false, m_fields = false, m_safe = false;
    QBrush m_background;
    QRect m_mark;
    int m_pointed = -1;
    std::optional<QPoint> m_pressed;
    /// Last position of the pointer while the picture is moved.
    std::optional<QPoint> m_panned;
    bool m_space = false;
    bool m_editable = false;
    /// Not owned; null for none.
    QPointer<QWidget> m_overlay;
    QRect m_overlay_part;
    /// In percent.
    int m_action_safe = 93, m_title_safe = 90;
};

}  // namespace zel::desktop
