#include "programs/desktop/widgets/elided_label.h"

#include <QStyle>
#include <QStylePainter>
#include <algorithm>

#include "programs/desktop/common/plain_text.h"

namespace zel::desktop {

namespace {

// In average letters.
constexpr int kLeastLetters = 4, kMostLetters = 60;

}  // namespace

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::SetLine(const QString& text) {
    setText(text);
    setToolTip(PlainToolTip(text));
    updateGeometry();
}

QSize ElidedLabel::SizeFor(int text_width) const {
    const QMargins margins = contentsMargins();
    return {text_width + margins.left() + margins.right(), fontMetrics().height() + margins.top() + margins.bottom()};
}

QSize ElidedLabel::sizeHint() const {
    const int most = kMostLetters * fontMetrics().averageCharWidth();
    return SizeFor(std::min(fontMetrics().horizontalAdvance(text()), most));
}

QSize ElidedLabel::minimumSizeHint() const {
    const int least = kLeastLetters * fontMetrics().averageCharWidth();
    return SizeFor(std::min(fontMetrics().horizontalAdvance(text()), least));
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    const QString line = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    painter.drawItemText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette(), isEnabled(),
                         line, foregroundRole());
}

}  // namespace zel::desktop
