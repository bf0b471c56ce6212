#include "module/resources/templates.h"

#include "module/resources/batch_dialog.h"
#include "module/resources/ftp_dialog.h"
#include "module/resources/import_dialog.h"
#include "module/resources/rgba_dialog.h"

namespace zel::resources {

namespace {

constexpr framework::DialogTemplate kDialogs[] = {kImportDialogTemplate, kFtpDialogTemplate, kBatchDialogTemplate,
                                                  kRgbaDialogTemplate};

}  // namespace

// Initialised at compile time, so that it is valid before any code of the module runs.
constinit const HINSTANCE__ kModuleInstance = {"ZelTrans", kDialogs};

}  // namespace zel::resources
