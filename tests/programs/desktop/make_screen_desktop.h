#pragma once

#include <memory>

#include "platform/script/headless_desktop.h"

namespace screen_test {

/// A desktop for a script that shows everything; apart from its class, so that tests need no Qt to have one.
std::unique_ptr<HeadlessDesktop> MakeScreenDesktop();

}  // namespace screen_test
