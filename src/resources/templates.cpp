#include "resources/templates.h"

#include "resources/import_dialog.h"
#include "resources/rgba_dialog.h"

namespace {

constexpr DialogTemplate kDialogs[] = {kImportDialogTemplate, kRgbaDialogTemplate};

}  // namespace

// Constant, so that it stands before any code of the module runs.
constinit const ModuleInstance kModuleInstance = {"ZelTrans", kDialogs};
