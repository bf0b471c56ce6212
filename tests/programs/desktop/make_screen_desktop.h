#pragma once

#include <memory>

#include "platform/script/headless_desktop.h"

namespace zel::screen_test {

/// A desktop for a script that shows everything; apart from its class, so that tests need no Qt to have one.
std::unique_ptr<script::HeadlessDesktop> MakeScreenDesktop();

}  // namespace zel::screen_test
