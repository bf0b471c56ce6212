#pragma once

#include <memory>

#include "platform/framework/window.h"

namespace zel::framework {

/// Creates the window of a template's control. Its rectangle is empty, and it has no parent yet.
std::unique_ptr<HWND__> MakeControl(const ControlTemplate& control);

}  // namespace zel::framework
