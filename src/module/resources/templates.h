#pragma once

#include "platform/framework/dialog_template.h"

/// The module as the framework knows it, with its dialog templates.
extern const ModuleInstance kModuleInstance;
