#include "programs/desktop/widgets/picture_view.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

#include "programs/desktop/common/plain_text.h"
#include "programs/desktop/models/picture_image.h"
#include "programs/desktop/widgets/checkerboard.h"

namespace zel::desktop {

namespace {

constexpr double kSmallest = 0.1, kLargest = 16.0, kStep = 1.25;
/// Around a fitted picture, in pixels.
constexpr int kMargin = 12;
const QColor kFieldColour(0, 216, 255), kMarkColour(255, 200, 0), kActionColour(255, 80, 80), kTitleColour(80, 255, 80);

/// The alpha as an opaque grey.
QImage KeyImage(const QImage& picture) {
    QImage key = picture.convertToFormat(QImage::Format_Alpha8);
    key.reinterpretAsFormat(QImage::Format_Grayscale8);
    return key.convertToFormat(QImage::Format_RGB32);
}

}  // namespace

PictureView::PictureView(QWidget* parent) : QAbstractScrollArea(parent), m_background(Checkerboard()) {
    setObjectName(QStringLiteral("picture"));
    setAccessibleName(tr("Picture of the message"));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    setFrameShape(QFrame::NoFrame);
    setMinimumSize(320, 240);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void PictureView::Show(const QImage& picture, const MessageDetails& details, const QString& message) {
    m_picture = picture;
    m_details = details;
    m_message = message;
    m_mark = {};
    PointAt(-1);
    SetKeyOnly(m_key);
    UpdateLayout();
}

void PictureView::SetBackground(Background background, const QColor& colour) {
    m_background = background == Background::kCheckerboard ? Checkerboard() : QBrush(colour);
    viewport()->update();
}

void PictureView::SetKeyOnly(bool on) {
    m_key = on;
    m_shown = {};
    if (!m_picture.isNull())
        m_shown = on ? KeyImage(m_picture) : m_picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    viewport()->update();
}

void PictureView::SetPixelAspect(bool on) {
    m_aspect = on;
    UpdateLayout();
}

void PictureView::SetFields(bool on) {
    m_fields = on;
    viewport()->update();
}

void PictureView::SetSafeAreas(bool on) {
    m_safe = on;
    viewport()->update();
}

void PictureView::SetSafeSizes(int action, int title) {
    m_action_safe = action;
    m_title_safe = title;
    viewport()->update();
}

void PictureView::TakeSettings(const PictureView& other) {
    m_background = other.m_background;
    m_aspect = other.m_aspect;
    m_fields = other.m_fields;
    m_safe = other.m_safe;
    SetSafeSizes(other.m_action_safe, other.m_title_safe);
    SetKeyOnly(other.m_key);
    UpdateLayout();
}

void PictureView::Follow(const PictureView& other) {
    m_fitted = other.m_fitted;
    m_zoom = other.m_zoom;
    UpdateLayout();
    horizontalScrollBar()->setValue(other.horizontalScrollBar()->value());
    verticalScrollBar()->setValue(other.verticalScrollBar()->value());
}

QRectF PictureView::ShownPlace(const QRect& part) const {
    return ToView().mapRect(QRectF(part));
}

int PictureView::PointedField() const {
    if (m_pointed < 0) return -1;
    return m_details.FieldAt(m_details.characters[static_cast<std::size_t>(m_pointed)].area.center());
}

void PictureView::SetOverlay(QWidget* widget, const QRect& part) {
    m_overlay = widget;
    m_overlay_part = part;
    PlaceOverlay();
}

/// As near to its part as the view has room.
void PictureView::PlaceOverlay() {
    if (m_overlay.isNull()) return;
    const QRect part = ShownPlace(m_overlay_part).toAlignedRect();
    const QSize size = m_overlay->sizeHint().expandedTo({part.width(), 0}).boundedTo(viewport()->size());
    const auto into = [](int at, int length, int room) { return std::clamp(at, 0, std::max(0, room - length)); };
    m_overlay->setGeometry(into(part.left(), size.width(), viewport()->width()),
                           into(part.top(), size.height(), viewport()->height()), size.width(), size.height());
}

QPoint PictureView::InPicture(QPointF position) const {
    const QPointF point = ToView().inverted().map(position);
    return {static_cast<int>(std::floor(point.x())), static_cast<int>(std::floor(point.y()))};
}

void PictureView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    viewport()->update();
    PlaceOverlay();
    Q_EMIT scrolled();
}

void PictureView::Mark(const QRect& part) {
    m_mark = part;
    viewport()->update();
}

double PictureView::Aspect() const {
    return m_aspect ? PixelRatio(m_picture.size()) : 1.0;
}

QSizeF PictureView::SizeAt(double zoom) const {
    const double scale = zoom / devicePixelRatioF();
    return {m_picture.width() * Aspect() * scale, m_picture.height() * scale};
}

QPointF PictureView::Origin() const {
    const QSizeF size = SizeAt(m_zoom);
    const QSizeF view = viewport()->size();
    const auto along = [](double room, double length, int scrolled) {
        return length <= room ? std::floor((room - length) / 2) : -scrolled;
    };
    return {along(view.width(), size.width(), horizontalScrollBar()->value()),
            along(view.height(), size.height(), verticalScrollBar()->value())};
}

QTransform PictureView::ToView() const {
    const double scale = m_zoom / devicePixelRatioF();
    const QPointF origin = Origin();
    return QTransform::fromTranslate(origin.x(), origin.y()).scale(Aspect() * scale, scale);
}

/// Adapts zoom and scroll bars to the size of picture and view.
void PictureView::UpdateLayout() {
    if (m_fitted && !m_picture.isNull()) {
        const QSizeF one = SizeAt(1.0);
        const QSize room = maximumViewportSize() - QSize(2 * kMargin, 2 * kMargin);
        m_zoom = std::clamp(std::min(room.width() / one.width(), room.height() / one.height()), kSmallest, kLargest);
    }
    const QSizeF size = m_picture.isNull() ? QSizeF(0, 0) : SizeAt(m_zoom);
    const auto set = [](QScrollBar& bar, double length, int room) {
        bar.setPageStep(room);
        bar.setSingleStep(20);
        bar.setRange(0, std::max(0, static_cast<int>(std::ceil(length)) - room));
    };
    set(*horizontalScrollBar(), size.width(), viewport()->width());
    set(*verticalScrollBar(), size.height(), viewport()->height());
    viewport()->update();
    PlaceOverlay();
    Q_EMIT zoomed(m_zoom);
}

/// @param around  point of the view at which the picture does not move.
void PictureView::ZoomTo(double zoom, QPointF around) {
    if (m_picture.isNull()) return;
    const QPointF in_picture = ToView().inverted().map(around);
    m_fitted = false;
    m_zoom = std::clamp(zoom, kSmallest, kLargest);
    UpdateLayout();
    const QPointF moved = ToView().map(in_picture) - around;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(moved.x()));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(moved.y()));
}

void PictureView::ZoomIn() {
    ZoomTo(m_zoom * kStep, QRectF(viewport()->rect()).center());
}

void PictureView::ZoomOut() {
    ZoomTo(m_zoom / kStep, QRectF(viewport()->rect()).center());
}

void PictureView::ShowActualPixels() {
    ZoomTo(1.0, QRectF(viewport()->rect()).center());
}

void PictureView::Fit() {
    m_fitted = true;
    UpdateLayout();
}

void PictureView::resizeEvent(QResizeEvent* /*event*/) {
    UpdateLayout();
}

void PictureView::wheelEvent(QWheelEvent* event) {
    // With Shift it scrolls.
    if ((event->modifiers() & Qt::ShiftModifier) != 0 || event->angleDelta().y() == 0)
        return QAbstractScrollArea::wheelEvent(event);
    ZoomTo(m_zoom * std::pow(kStep, event->angleDelta().y() / 120.0), event->position());
    event->accept();
}

void PictureView::PointAt(int character) {
    if (m_pointed == character) return;
    m_pointed = character;
    viewport()->update();
    const bool none = character < 0;
    Q_EMIT pointedAt(none ? QString() : m_details.characters[static_cast<std::size_t>(character)].Description());
}

void PictureView::SetSpaceDown(bool down) {
    m_space = down;
    if (!m_panned) viewport()->setCursor(down ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void PictureView::PanTo(QPoint position) {
    const QPoint moved = position - *m_panned;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
    m_panned = position;
}

void PictureView::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) return SetSpaceDown(false);
    QAbstractScrollArea::keyReleaseEvent(event);
}

void PictureView::focusOutEvent(QFocusEvent* event) {
    SetSpaceDown(false);
    QAbstractScrollArea::focusOutEvent(event);
}

// Left and Right select the previous and the next character; Enter opens its tab field.
void PictureView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && m_editable && PointedField() >= 0) return Q_EMIT fieldActivated(PointedField());
    const int count = static_cast<int>(m_details.characters.size());
    const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
    if (event->key() == Qt::Key_Escape) return PointAt(-1);
    if (event->key() == Qt::Key_Space) return SetSpaceDown(true);
    if (step == 0 || count == 0) return QAbstractScrollArea::keyPressEvent(event);
    PointAt(std::clamp(m_pointed < 0 && step < 0 ? count - 1 : m_pointed + step, 0, count - 1));
}

void PictureView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && m_space)) {
        m_panned = event->pos();
        viewport()->setCursor(Qt::ClosedHandCursor);
    } else if (event->button() == Qt::LeftButton) {
        m_pressed = event->pos();
    }
}

void PictureView::mouseReleaseEvent(QMouseEvent* /*event*/) {
    m_panned.reset();
    SetSpaceDown(m_space);
}

void PictureView::mouseMoveEvent(QMouseEvent* event) {
    if (m_panned) return PanTo(event->pos());
    if ((event->buttons() & Qt::LeftButton) != 0) {
        if (!m_pressed || m_picture.isNull()) return;
        if ((event->pos() - *m_pressed).manhattanLength() < QApplication::startDragDistance()) return;
        m_pressed.reset();
        Q_EMIT dragged();
        return;
    }
    m_pressed.reset();
    PointAt(m_details.CharacterAt(InPicture(event->position())));
}

void PictureView::mouseDoubleClickEvent(QMouseEvent* event) {
    const int field =
        m_editable && event->button() == Qt::LeftButton ? m_details.FieldAt(InPicture(event->position())) : -1;
    if (field >= 0) {
        m_pressed.reset();
        Q_EMIT fieldActivated(field);
        return;
    }
    if (m_fitted) {
        ZoomTo(1.0, event->position());
    } else {
        Fit();
    }
}

bool PictureView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave && !hasFocus()) PointAt(-1);
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QString text =
            m_pointed < 0 ? QString() : m_details.characters[static_cast<std::size_t>(m_pointed)].Description();
        QToolTip::showText(help->globalPos(), PlainToolTip(text), viewport());
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void PictureView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().color(QPalette::Window));
    if (m_shown.isNull()) return PaintMessage(painter);
    const QTransform to_view = ToView();
    const QRectF place = to_view.mapRect(QRectF(m_shown.rect()));
    painter.setBrushOrigin(place.topLeft());
    painter.fillRect(place, m_key ? QBrush(Qt::black) : m_background);
    // At a large scale, show single pixels.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_zoom < 4.0);
    painter.drawImage(place, m_shown);
    PaintOverlays(painter);
    // Alone on the screen it always has the focus.
    if (hasFocus() && !isWindow()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
    }
}

void PictureView::PaintOverlays(QPainter& painter) const {
    const QTransform to_view = ToView();
    painter.setBrush(Qt::NoBrush);
    if (m_safe) PaintSafeAreas(painter);
    if (m_fields) PaintFields(painter);
    painter.setPen(QPen(kMarkColour, 2));
    if (!m_mark.isEmpty()) painter.drawRect(to_view.mapRect(QRectF(m_mark)));
    if (m_pointed >= 0) {
        const QRectF place(m_details.characters[static_cast<std::size_t>(m_pointed)].area);
        painter.setPen(QPen(Qt::black, 3));
        painter.drawRect(to_view.mapRect(place));
        painter.setPen(QPen(kMarkColour, 1));
        painter.drawRect(to_view.mapRect(place));
    }
}

void PictureView::PaintFields(QPainter& painter) const {
    const QTransform to_view = ToView();
    QList<QRectF> labels;
    for (const FieldDetail& field : m_details.fields) {
        const QRectF frame = to_view.mapRect(QRectF(field.frame));
        painter.setPen(QPen(kFieldColour, 1));
        painter.drawRect(frame);
        QRectF label = QRectF(painter.fontMetrics().boundingRect(field.name)).adjusted(-3, -1, 3, 1);
        label.moveBottomLeft(frame.topLeft());
        if (label.top() < 0) label.moveTopLeft(frame.topLeft());
        // Fields may begin at the same position.
        for (const QRectF& placed : std::as_const(labels)) {
            if (placed.intersects(label)) label.moveLeft(placed.right() + 2);
        }
        labels.append(label);
        painter.fillRect(label, QColor(0, 24, 40, 208));
        painter.setPen(QColor(0xC8, 0xF4, 0xFF));
        painter.drawText(label, Qt::AlignCenter, field.name);
    }
}

void PictureView::PaintSafeAreas(QPainter& painter) const {
    const QRectF whole = ToView().mapRect(QRectF(m_shown.rect()));
    const auto part_of_whole = [&](int percent) {
        return QRectF(0, 0, whole.width() * percent / 100.0, whole.height() * percent / 100.0);
    };
    const auto paint = [&](int percent, const QColor& colour, const QString& name, int side) {
        QRectF area = part_of_whole(percent);
        area.moveCenter(whole.center());
        painter.setPen(QPen(colour, 1, Qt::DashLine));
        painter.drawRect(area);
        // Both labels are inside the inner area: between the areas there is not enough space.
        QRectF label = part_of_whole(m_title_safe);
        label.moveCenter(whole.center());
        label.adjust(4, 2, -4, -2);
        painter.setPen(Qt::black);
        painter.drawText(label.translated(1, 1), side | Qt::AlignBottom, name);
        painter.setPen(colour);
        painter.drawText(label, side | Qt::AlignBottom, name);
    };
    paint(m_action_safe, kActionColour, tr("action safe, %1 %").arg(m_action_safe), Qt::AlignLeft);
    paint(m_title_safe, kTitleColour, tr("title safe, %1 %").arg(m_title_safe), Qt::AlignRight);
}

void PictureView::PaintMessage(QPainter& painter) const {
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                     Qt::AlignCenter | Qt::TextWordWrap, m_message);
}

}  // namespace zel::desktop
