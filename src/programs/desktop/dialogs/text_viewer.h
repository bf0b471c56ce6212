#pragma once

#include <string>

class QWidget;

namespace zel::desktop {

/// Opens a read-only window with the text file that a command line such as "Notepad FILE" names. The window remains
/// open after the call, until the user or its parent closes it.
/// @param parent  may be null.
/// @return false when the file is missing or cannot be read.
bool ShowTextFile(QWidget* parent, const std::string& command_line);

}  // namespace zel::desktop
