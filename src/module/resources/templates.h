#pragma once

#include "platform/framework/dialog_template.h"

namespace zel::resources {

/// The module's handle points to this: its name and its dialog templates.
extern const HINSTANCE__ kModuleInstance;

}  // namespace zel::resources
