#pragma once

#include <string>

#include "platform/script/dialog_driver.h"
#include "platform/script/headless_desktop.h"

namespace zel::run {

/// How the choice for an RGBA file is answered.
enum class RgbaAnswer { kObject, kBackground, kCancel };

/// Has the choice for an RGBA file answered whenever it comes.
void AnswerRgbaChoice(script::HeadlessDesktop& desktop, RgbaAnswer answer);

/// Names the directories in the main dialog, as a user would; both are in the module's form.
void EnterDirectories(script::DialogDriver& user, const std::string& message_directory,
                      const std::string& font_directory);

/// Stores the Skip Warnings setting, which a dialog takes over when it opens.
void StoreSkipWarnings(bool skip);

}  // namespace zel::run
