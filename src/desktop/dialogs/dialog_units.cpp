#include "desktop/dialogs/dialog_units.h"

#include <algorithm>
#include <cmath>

#include "desktop/dialogs/screen_text.h"

namespace {

const QString kLetters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");

}  // namespace

DialogUnits::DialogUnits(const QFontMetricsF& font)
    : m_x(font.horizontalAdvance(kLetters) / static_cast<double>(kLetters.size()) / 4), m_y(font.height() / 8) {}

void DialogUnits::MakeRoom(const QSizeF& units, const QSizeF& pixels) {
    if (units.width() > 0) m_x = std::max(m_x, pixels.width() / units.width());
    if (units.height() > 0) m_y = std::max(m_y, pixels.height() / units.height());
}

QRect DialogUnits::Pixels(double x, double y, double cx, double cy) const {
    const auto round = [](double value) { return static_cast<int>(std::lround(value)); };
    const QPoint corner(round(x * m_x), round(y * m_y));
    return {corner, QSize(round((x + cx) * m_x) - corner.x(), round((y + cy) * m_y) - corner.y())};
}

double TextWidth(const QString& text, const QFontMetricsF& font) {
    return font.horizontalAdvance(WithoutAccessKey(text));
}

QStringList BrokenLines(const QString& text, double width, const QFontMetricsF& font) {
    QStringList lines;
    for (const QString& word : text.simplified().split(u' ')) {
        const QString longer = lines.isEmpty() ? word : lines.back() + u' ' + word;
        if (!lines.isEmpty() && TextWidth(longer, font) <= width) {
            lines.back() = longer;
        } else {
            lines.append(word);
        }
    }
    return lines;
}

double WidthForLines(const QString& text, int lines, const QFontMetricsF& font) {
    const QStringList words = text.simplified().split(u' ');
    double width = 0;
    for (const QString& word : words) width = std::max(width, TextWidth(word, font));
    while (BrokenLines(text, width, font).size() > std::max(lines, 1)) ++width;
    return width;
}
