#pragma once

#include <string>

#include "platform/script/dialog_driver.h"
#include "platform/script/headless_desktop.h"

namespace zel::run {

/// The answer to the choice for an RGBA file.
enum class RgbaAnswer { kObject, kBackground, kCancel };

/// Answers each choice for an RGBA file.
void AnswerRgbaChoice(script::HeadlessDesktop& desktop, RgbaAnswer answer);

/// Types the directories, in the module's form, into the main dialog.
void EnterDirectories(script::DialogDriver& user, const std::string& message_directory,
                      const std::string& font_directory);

/// Stores the Skip Warnings setting, which a dialog reads when it opens.
void StoreSkipWarnings(bool skip);

}  // namespace zel::run
