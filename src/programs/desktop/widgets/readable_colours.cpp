#include "programs/desktop/widgets/readable_colours.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

namespace zel::desktop {

namespace {

/// @param part  of `first`, 0 to 1; the rest is `second`.
QColor Mixed(const QColor& first, const QColor& second, double part) {
    const auto mix = [part](int a, int b) { return qRound(a * part + b * (1 - part)); };
    return {mix(first.red(), second.red()), mix(first.green(), second.green()), mix(first.blue(), second.blue())};
}

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// Draws frames of check boxes and radio buttons that are visible on a dark window, where a style may draw them darker
/// than the window.
class IndicatorStyle : public QProxyStyle {
  public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
        if ((box || element == PE_IndicatorRadioButton) && IsDark(option->palette)) DrawFrame(*option, *painter, box);
    }

  private:
    static void DrawFrame(const QStyleOption& option, QPainter& painter, bool box) {
        constexpr double kPart = 0.6;
        const QPalette& palette = option.palette;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), kPart));
        painter.setBrush(Qt::NoBrush);
        const QRectF frame = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
        if (box) {
            painter.drawRoundedRect(frame, 2, 2);
        } else {
            painter.drawEllipse(frame);
        }
        painter.restore();
    }
};

/// Keeps the hints of fields readable when the palette changes.
class HintColours : public QObject {
  public:
    explicit HintColours(QObject* parent) : QObject(parent) { Update(); }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::ApplicationPaletteChange) Update();
        return QObject::eventFilter(object, event);
    }

  private:
    static void Update() {
        QPalette palette = QApplication::palette();
        const QColor hint = HintColour(palette);
        // Setting the palette sends another event.
        if (palette.color(QPalette::Active, QPalette::PlaceholderText) == hint) return;
        palette.setColor(QPalette::PlaceholderText, hint);
        QApplication::setPalette(palette);
    }
};

}  // namespace

QColor HintColour(const QPalette& palette) {
    constexpr double kPart = 0.65;
    return Mixed(palette.color(QPalette::Active, QPalette::Text), palette.color(QPalette::Active, QPalette::Base),
                 kPart);
}

void UseReadableColours() {
    QApplication::setStyle(new IndicatorStyle(QStyleFactory::create(QApplication::style()->name())));
    qApp->installEventFilter(new HintColours(qApp));
}

}  // namespace zel::desktop
