#include "programs/desktop/dialogs/drawn_controls.h"

#include <QStyleOptionButton>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <cmath>

#include "programs/desktop/common/plain_text.h"
#include "programs/desktop/dialogs/dialog_units.h"
#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

GroupFrame::GroupFrame(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void GroupFrame::SetTitle(const QString& title) {
    m_title = title;
    setAccessibleName(WithoutAccessKey(title));
    update();
}

void GroupFrame::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    const QFontMetricsF metrics(font());
    const double indent = metrics.averageCharWidth();
    // The upper edge is at half the height of a title, also without a title.
    const QRectF frame = QRectF(rect()).adjusted(0.5, std::floor(metrics.height() / 2) + 0.5, -0.5, -0.5);
    if (!m_title.isEmpty()) {
        const QRectF title(indent, 0, TextWidth(m_title, metrics) + indent, metrics.height());
        painter.drawItemText(title.toAlignedRect(), Qt::AlignCenter | Qt::TextShowMnemonic, palette(), isEnabled(),
                             m_title, QPalette::WindowText);
        painter.setClipRegion(QRegion(rect()) - QRegion(title.toAlignedRect()));
    }
    QColor line = palette().color(QPalette::WindowText);
    // Visible on light and dark windows.
    line.setAlphaF(0.25F);
    painter.setPen(line);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawRoundedRect(frame, 2, 2);
}

void MultiLineButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    const QRect inside = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
    const QString lines = BrokenLines(text(), inside.width(), QFontMetricsF(font())).join(u'\n');
    painter.drawItemText(inside, Qt::AlignCenter | Qt::TextShowMnemonic, palette(), isEnabled(), lines,
                         QPalette::ButtonText);
    if (!hasFocus()) return;
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, this);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

LineLabel::LineLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void LineLabel::SetLine(const QString& line) {
    m_line = line;
    setAccessibleName(buddy() != nullptr ? WithoutAccessKey(line) : line);
    Fit();
}

void LineLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    Fit();
}

void LineLabel::Fit() {
    const QString shown = buddy() != nullptr ? WithoutAccessKey(m_line) : m_line;
    const int room = contentsRect().width();
    const bool fits = fontMetrics().horizontalAdvance(shown) <= room;
    setText(fits ? m_line : fontMetrics().elidedText(m_line, Qt::ElideRight, room));
    setToolTip(fits ? QString() : PlainToolTip(shown));
}

}  // namespace zel::desktop
