#pragma once

#include <QString>

namespace zel::desktop {

// Widgets of the toolkit guess whether a text is markup. A text that may come from a file must be shown as it is: a
// label gets Qt::PlainText, a box is made by RunBox, and a tool tip, which has no such property, gets one of these
// texts.

/// In characters. A longer tool tip would cover the screen.
inline constexpr qsizetype kLongestToolTip = 2000;

/// A tool tip that shows `text` as it is, whatever it contains. Empty for an empty text.
inline QString PlainToolTip(const QString& text) {
    if (text.isEmpty()) return {};
    const bool cut = text.size() > kLongestToolTip;
    const QString shown = cut ? text.left(kLongestToolTip) + u'…' : text;
    return QStringLiteral("<div style=\"white-space:pre-wrap\">%1</div>").arg(shown.toHtmlEscaped());
}

/// A name for a file, made from a text that may contain anything: characters that a file system or a dialog takes as
/// syntax become '-'.
inline QString FileNameFrom(QString text) {
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control || c.category() == QChar::Other_Format ||
            QStringLiteral("/\\:*?\"<>|").contains(c))
            c = u'-';
    }
    return text.simplified();
}

}  // namespace zel::desktop
