#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace zel::desktop {

// Conversion between the module's bytes and text on the screen. The bytes are UTF-8, this system's encoding, so that a
// typed path with umlauts names the file. A text that is not valid UTF-8 comes from an old file and is shown as
// Latin-1.

QString ScreenText(std::string_view bytes);
std::string ModuleText(const QString& text);

/// The index in ScreenText(bytes) of a byte position.
int ScreenPosition(std::string_view bytes, std::size_t position);
/// The longest beginning of `text` that has at most `limit` bytes as ModuleText.
QString CutToBytes(const QString& text, std::size_t limit);

/// The text as displayed: without the & of an access key, and with && as &.
QString WithoutAccessKey(const QString& text);

}  // namespace zel::desktop
