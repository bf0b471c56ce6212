#pragma once

#include "module/contract/registration.h"
#include "platform/framework/extension_module.h"
#include "platform/system/types.h"

// The state of the module between the calls of the host: one instance per process, used on the user-interface thread
// only. The four variables have names that the contract fixes.

/// The framework's record of the module.
extern AFX_EXTENSION_MODULE ZelTransDLL;
/// The module's resources, with its dialog templates.
extern HINSTANCE g_hZelResource;
/// The registered callback, null for none.
extern zel::OnCharCallback g_pfnOnChar;
/// Directory of the name lists, ending in a backslash; always terminated by NUL.
extern char g_szMapDir[MAX_PATH];

namespace zel::state {

/// The stored Skip Warnings setting, 0 if none is stored. SaveWarningPref stores it.
BOOL StoredSkipWarnings();

/// Calls the registered callback, if there is one.
void CallOnChar(CWnd* host, tag_CharInf* info, unsigned int character);

}  // namespace zel::state
