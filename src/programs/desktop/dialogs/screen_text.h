#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace zel::desktop {

/// Text between the module, which has bytes, and the screen. The bytes are this system's own encoding, UTF-8, so that a
/// path typed with umlauts names the file; a text that isn't valid UTF-8 comes out of an old file, and is shown a byte
/// a character, as Latin-1.

QString ScreenText(std::string_view bytes);
std::string ModuleText(const QString& text);

/// Position in the screen's text of a position in the module's, and the longest part of `text` that has at most `limit`
/// bytes in the module's.
int ScreenPosition(std::string_view bytes, std::size_t position);
QString CutToBytes(const QString& text, std::size_t limit);

/// The text as a reader sees it: an access key's & is gone, two of them are one.
QString WithoutAccessKey(const QString& text);

/// The text with places to break a line in words longer than a line, such as paths: none can be seen, and
/// WithoutBreaks takes them away.
QString WithBreaks(const QString& text);
QString WithoutBreaks(QString text);

}  // namespace zel::desktop
