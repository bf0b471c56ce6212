#pragma once

#include <optional>
#include <string>

#include "host/number_range.h"
#include "platform/script/headless_desktop.h"

namespace zel::run {

/// Types a range into the batch dialog and presses OK, which runs the batch. A dialog that stays open is cancelled.
/// @return the module's text on why it refused the range; empty when the batch ran.
std::optional<std::string> EnterRange(const script::HeadlessDesktop& desktop, CDialog& dialog,
                                      const host::NumberRange& range);

}  // namespace zel::run
