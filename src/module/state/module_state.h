#pragma once

#include "module/contract/registration.h"
#include "platform/framework/extension_module.h"
#include "platform/system/types.h"

// What outlives a call from the host: one instance per process, used on the user-interface thread only.

extern AFX_EXTENSION_MODULE ZelTransDLL;  ///< the module's record with the framework.
extern HINSTANCE g_hZelResource;          ///< the module's resources; its dialog templates are found through it.
extern zel::OnCharCallback g_pfnOnChar;   ///< the registered callback, null for none.
extern char g_szMapDir[MAX_PATH];  ///< directory of the name lists, with its closing separator; always terminated.

namespace zel::state {

/// Calls the registered callback; without one, does nothing.
void CallOnChar(CWnd* host, tag_CharInf* info, unsigned int character);

}  // namespace zel::state
