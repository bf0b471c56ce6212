#include "resources/templates.h"

#include "resources/batch_dialog.h"
#include "resources/ftp_dialog.h"
#include "resources/import_dialog.h"
#include "resources/rgba_dialog.h"

namespace {

constexpr DialogTemplate kDialogs[] = {kImportDialogTemplate, kFtpDialogTemplate, kBatchDialogTemplate,
                                       kRgbaDialogTemplate};

}  // namespace

// Constant, so that it stands before any code of the module runs.
constinit const ModuleInstance kModuleInstance = {"ZelTrans", kDialogs};
