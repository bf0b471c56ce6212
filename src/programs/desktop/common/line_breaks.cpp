#include "programs/desktop/common/line_breaks.h"

namespace zel::desktop {

namespace {

/// A zero-width space.
constexpr QChar kBreak(0x200B);
/// In characters, about a line of a message box.
constexpr int kLongestWord = 48;

}  // namespace

QString WithBreaks(const QString& text) {
    QString broken;
    int word = 0;
    for (const QChar c : text) {
        broken += c;
        word = c.isSpace() ? 0 : word + 1;
        const bool separator = c == u'\\' || c == u'/';
        if (word >= kLongestWord || (separator && word >= kLongestWord / 2)) {
            broken += kBreak;
            word = 0;
        }
    }
    return broken;
}

QString WithoutBreaks(QString text) {
    return text.remove(kBreak);
}

}  // namespace zel::desktop
