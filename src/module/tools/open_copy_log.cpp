#include "module/tools/open_copy_log.h"

#include "platform/framework/cstring.h"
#include "platform/system/commands.h"
#include "platform/system/types.h"

namespace zel::tools {

void OpenCopyLog(char* text) {
    const CString command = CString("Notepad ") + static_cast<const char*>(text);
    WinExec(command, SW_SHOW);
}

}  // namespace zel::tools
