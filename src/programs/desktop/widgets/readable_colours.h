#pragma once

#include <QColor>

class QPalette;

namespace zel::desktop {

/// A colour for hints, such as the text of an empty field: weaker than a text, but readable on its background in a
/// light and in a dark palette.
QColor HintColour(const QPalette& palette);

/// Makes hints of fields and the frames of unchecked boxes readable in every palette of the application, also after a
/// change of palette. Call it once, when the application's style is set.
void UseReadableColours();

}  // namespace zel::desktop
