#pragma once

#include <optional>
#include <string>

#include "platform/script/headless_desktop.h"

namespace zel::run {

/// A range of message numbers, as it is typed into the batch dialog.
struct NumberRange {
    std::string first;
    std::string last;
};

/// Types a range into the batch dialog and presses OK, which makes the run; a dialog that stays open is cancelled.
/// @return why the module refused the range, in its own words; nothing when the run was made.
std::optional<std::string> EnterRange(const script::HeadlessDesktop& desktop, CDialog& dialog,
                                      const NumberRange& range);

}  // namespace zel::run
