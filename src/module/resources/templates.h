#pragma once

#include "platform/framework/dialog_template.h"

namespace zel::resources {

/// The module as the framework knows it, with its dialog templates.
extern const HINSTANCE__ kModuleInstance;

}  // namespace zel::resources
