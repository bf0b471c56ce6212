#include "platform/framework/message_box.h"

#include "platform/framework/cwinapp.h"
#include "platform/seam/desktop.h"
#include "platform/system/text.h"

using namespace zel;

int MessageBoxA(HWND owner, const char* text, const char* caption, UINT style) {
    return seam::GetDesktop().ShowMessageBox(owner, system::OrEmpty(text), caption != nullptr ? caption : "Error",
                                             style);
}

int AfxMessageBox(const char* text, UINT type, UINT) {
    const bool plain = (type & (MB_TYPEMASK | MB_ICONMASK)) == 0;
    return MessageBoxA(nullptr, text, AfxGetApp()->m_pszAppName, plain ? type | MB_ICONEXCLAMATION : type);
}
