#pragma once

#include "platform/framework/cobject.h"

/// Shows a message box on the current desktop.
/// @param owner    may be null.
/// @param text     null for the empty text.
/// @param caption  null for "Error".
/// @return IDOK, IDCANCEL, IDYES and so on.
ZEL_PLATFORM_API int MessageBoxA(HWND owner, const char* text, const char* caption, UINT style);

/// The same without an owner and with the application's name as caption. A box with OK alone and no icon gets the
/// exclamation icon (style 48). Any other style is passed on unchanged.
ZEL_PLATFORM_API int AfxMessageBox(const char* text, UINT type = MB_OK, UINT helpId = 0);
