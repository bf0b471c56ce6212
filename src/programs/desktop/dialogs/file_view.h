#pragma once

class QFileDialog;

namespace zel::desktop {

/// Makes a file dialog show files whose names begin with a dot, as those of messages and fonts do. It becomes Qt's own
/// dialog, since the system's hides them.
void ShowDotFiles(QFileDialog& dialog);

/// Sizes a file dialog that ShowDotFiles has set up: sizes, kinds and dates are shown whole, names get the remaining
/// width.
/// @param columns  width in average characters.
void FitFileColumns(QFileDialog& dialog, int columns);

}  // namespace zel::desktop
