#include "module/state/module_state.h"

#include <cstring>

#include "module/contract/stored_settings.h"
#include "module/contract/zel_font.h"
#include "platform/framework/cwinapp.h"

using namespace zel;

AFX_EXTENSION_MODULE ZelTransDLL = {};
HINSTANCE g_hZelResource = nullptr;
OnCharCallback g_pfnOnChar = nullptr;
char g_szMapDir[MAX_PATH] = {};

OnCharCallback Register_GLV_OnChar(OnCharCallback callback, char* map_dir) {
    const OnCharCallback before = g_pfnOnChar;
    g_pfnOnChar = callback;
    std::memcpy(g_szMapDir, map_dir, sizeof g_szMapDir);
    g_szMapDir[sizeof g_szMapDir - 1] = '\0';  // the host's text may have no NUL
    return before;
}

bool IgnoreZelFontErrors() {
    return CZelFont::m_bIgnoreErrors != 0;
}

void SaveWarningPref(int value) {
    CZelFont::m_bIgnoreErrors = value;
    AfxGetModuleState()->m_pCurrentWinApp->WriteProfileInt(stored::kFontSection, stored::kSkipWarnings, value);
}

void CancelZelFontBrowse() {
    CZelFont::m_bCancelFontBrowse = false;
}

int ZelYOffset() {
    return CZelFont::m_iZelYOffset;
}

void ZelYOffsetReset(int value) {
    CZelFont::m_iZelYOffset = value;
}

namespace zel::state {

BOOL StoredSkipWarnings() {
    CWinApp& app = *AfxGetModuleState()->m_pCurrentWinApp;
    return static_cast<BOOL>(app.GetProfileIntA(stored::kFontSection, stored::kSkipWarnings, 0));
}

void CallOnChar(CWnd* host, tag_CharInf* info, unsigned int character) {
    if (g_pfnOnChar != nullptr) g_pfnOnChar(host, info, character);
}

}  // namespace zel::state
