#pragma once

#include <QString>
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

}  // namespace zel::desktop
