#pragma once

#include <QString>
#include <string_view>

class QWidget;

namespace zel::pictures {

/// Sets a style and a palette that are the same on every machine.
/// @param palette  "light" or "dark".
void UsePalette(std::string_view palette);

/// Writes a picture of a window to DIRECTORY/NAME.png; reports a failure on the standard error output.
void Grab(QWidget& window, const QString& directory, const QString& name);

}  // namespace zel::pictures
