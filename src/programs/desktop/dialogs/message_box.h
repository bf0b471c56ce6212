#pragma once

#include <string>

#include "platform/system/types.h"

class QWidget;

namespace zel::desktop {

/// Shows a message box with the icon and the buttons of `style`, its text as it stands. Escape and the title bar's
/// button mean Cancel, or OK where that is the only button; where neither is there, they do nothing.
/// @param parent  may be null. @return the id of the button pressed.
int RunMessageBox(QWidget* parent, const std::string& text, const std::string& caption, UINT style);

}  // namespace zel::desktop
