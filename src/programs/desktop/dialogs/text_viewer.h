#pragma once

#include <string>

class QWidget;

namespace zel::desktop {

/// Opens a window with the text file that a command line such as "Notepad FILE" names; it can be read, not changed. The
/// window stays when the call returns, and goes when its user closes it, or with its parent.
/// @param parent  may be null. @return false when there is no such file, or it can't be read.
bool ShowTextFile(QWidget* parent, const std::string& commandLine);

}  // namespace zel::desktop
