#pragma once

#include "platform/framework/cobject.h"

/// Shows a message box through the current desktop. A null text is the empty text, a null caption is "Error"; `owner`
/// may be null.
/// @return IDOK, IDCANCEL, IDYES and so on.
ZEL_PLATFORM_API int MessageBoxA(HWND owner, const char* text, const char* caption, UINT style);

/// The same with the application's name as caption and no owner. The style goes to the desktop as given, without an
/// icon of the framework's choice.
ZEL_PLATFORM_API int AfxMessageBox(const char* text, UINT type = MB_OK, UINT helpId = 0);

/// The wait cursor, for as long as the object lives.
class ZEL_PLATFORM_API CWaitCursor {
  public:
    CWaitCursor();
    ~CWaitCursor();

    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
};
