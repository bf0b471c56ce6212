#include "programs/desktop/dialogs/dialog_units.h"

#include <algorithm>
#include <cmath>

#include "programs/desktop/dialogs/screen_text.h"

namespace zel::desktop {

namespace {

const QString kLetters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");

constexpr double kLargestStretch = 1.5;

}  // namespace

DialogUnits::DialogUnits(const QFontMetricsF& font)
    : m_x(font.horizontalAdvance(kLetters) / static_cast<double>(kLetters.size()) / 4),
      m_y(font.height() / 8),
      m_largest_x(m_x * kLargestStretch),
      m_largest_y(m_y * kLargestStretch) {}

void DialogUnits::MakeRoom(const QSizeF& units, const QSizeF& pixels) {
    const auto widen = [](double& unit, double largest, double room, double needed) {
        if (room > 0) unit = std::min(largest, std::max(unit, needed / room));
    };
    widen(m_x, m_largest_x, units.width(), pixels.width());
    widen(m_y, m_largest_y, units.height(), pixels.height());
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

}  // namespace zel::desktop
