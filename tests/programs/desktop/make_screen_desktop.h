#pragma once

#include <memory>

#include "platform/script/headless_desktop.h"

namespace zel::screen_test {

/// Makes a ScreenDesktop. In a header of its own, so that its users need no Qt.
std::unique_ptr<script::HeadlessDesktop> MakeScreenDesktop();

}  // namespace zel::screen_test
