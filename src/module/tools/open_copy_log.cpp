#include "module/tools/open_copy_log.h"

#include "platform/framework/cstring.h"
#include "platform/system/commands.h"
#include "platform/system/types.h"

namespace zel::tools {

void OpenCopyLog(char* path) {
    const CString command = CString("Notepad ") + static_cast<const char*>(path);
    WinExec(command, SW_SHOW);
}

}  // namespace zel::tools
