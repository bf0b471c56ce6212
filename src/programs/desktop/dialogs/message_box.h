#pragma once

#include <string>

#include "platform/system/types.h"

class QWidget;

namespace zel::desktop {

/// Shows a message box with the icon and the buttons of `style`. The text is shown as plain text. Escape and the title
/// bar's button mean Cancel, or OK if that is the only button; otherwise they do nothing.
/// @param parent  may be null.
/// @return the id of the pressed button.
int RunMessageBox(QWidget* parent, const std::string& text, const std::string& caption, UINT style);

}  // namespace zel::desktop
