#pragma once

#include <QFontMetricsF>
#include <QRect>
#include <QSizeF>
#include <QString>
#include <QStringList>

namespace zel::desktop {

/// Dialog units of a font in pixels: a quarter of its average width, an eighth of its height.
class DialogUnits {
  public:
    /// Average width of the 52 letters, and the height.
    explicit DialogUnits(const QFontMetricsF& font);

    /// Widens the units until `units`, a width and height in dialog units, hold `pixels`, but never beyond half as much
    /// again as the font's own. Zero asks for nothing.
    void MakeRoom(const QSizeF& units, const QSizeF& pixels);

    /// The edges are rounded, not the size, so that controls which touch in units touch in pixels.
    QRect Pixels(double x, double y, double cx, double cy) const;

  private:
    double m_x;  // pixels a unit
    double m_y;
    double m_largest_x;
    double m_largest_y;
};

/// The lines of a text of a button that breaks at blanks to fit `width` pixels; an access key takes no room.
QStringList BrokenLines(const QString& text, double width, const QFontMetricsF& font);
/// The least width at which the text has no more than `lines` lines.
double WidthForLines(const QString& text, int lines, const QFontMetricsF& font);
/// Width of a text with an access key.
double TextWidth(const QString& text, const QFontMetricsF& font);

}  // namespace zel::desktop
