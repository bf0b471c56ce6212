#pragma once

#include <QString>

namespace zel::desktop {

/// Inserts invisible places for line breaks into words longer than a line, such as paths; WithoutBreaks removes them.
QString WithBreaks(const QString& text);
QString WithoutBreaks(QString text);

}  // namespace zel::desktop
