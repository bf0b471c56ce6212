#pragma once

#include <QString>
#include <QStringList>
#include <string_view>

namespace zel::desktop {

/// A text of the host, which is UTF-8.
inline QString Text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// A count with its noun: "1 message", "2 messages".
inline QString Counted(std::size_t count, const char* singular, const char* plural) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? singular : plural));
}

/// The first lines of a list, and the number of the others.
inline QString FirstLines(const QStringList& lines) {
    constexpr qsizetype kShown = 4;
    QString text = lines.mid(0, kShown).join(u'\n');
    if (lines.size() > kShown) text += QStringLiteral("\n… and %1 more").arg(lines.size() - kShown);
    return text;
}

/// The first names of a list, and the number of the others, in one line.
inline QString FirstNames(const QStringList& names) {
    constexpr qsizetype kShown = 4;
    QString text = names.mid(0, kShown).join(QStringLiteral(", "));
    if (names.size() > kShown) text += QStringLiteral(" and %1 more").arg(names.size() - kShown);
    return text;
}

}  // namespace zel::desktop
