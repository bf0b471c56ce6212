#pragma once

#include <QFontMetricsF>
#include <QRect>
#include <QSizeF>
#include <QString>
#include <QStringList>

namespace zel::desktop {

/// Size of a font's dialog units in pixels: a quarter of its average width, an eighth of its height.
class DialogUnits {
  public:
    /// The average width is that of the 52 letters.
    explicit DialogUnits(const QFontMetricsF& font);

    /// Enlarges the units until a rectangle of `units` dialog units is at least `pixels` large, up to 1.5 times the
    /// font's own units. A width or height of 0 is ignored.
    void MakeRoom(const QSizeF& units, const QSizeF& pixels);

    /// A rectangle in pixels. The edges are rounded, not the size, so that adjacent controls stay adjacent.
    QRect Pixels(double x, double y, double cx, double cy) const;

  private:
    /// Pixels per unit.
    double m_x;
    double m_y;
    double m_largest_x;
    double m_largest_y;
};

/// Breaks a button's text at blanks into lines of at most `width` pixels. The & of an access key has no width.
QStringList BrokenLines(const QString& text, double width, const QFontMetricsF& font);
/// The smallest width, in pixels, at which the text has at most `lines` lines.
double WidthForLines(const QString& text, int lines, const QFontMetricsF& font);
/// Width of a text without the & of its access key, in pixels.
double TextWidth(const QString& text, const QFontMetricsF& font);

}  // namespace zel::desktop
