#include "platform/framework/cwinapp.h"

#include "platform/seam/desktop.h"
#include "platform/seam/settings_store.h"
#include "platform/system/text.h"

using namespace zel;

namespace {

constexpr const char* kDefaultName = "Tavro";
int g_waitCursors = 0;

AFX_MODULE_STATE& State() {
    static auto& state = *new AFX_MODULE_STATE;  // never destroyed, so that it outlives every module
    return state;
}

}  // namespace

AFX_MODULE_STATE* AfxGetModuleState() {
    if (State().m_pCurrentWinApp == nullptr) {
        static auto* const app = new CWinApp(kDefaultName);
        State().m_pCurrentWinApp = app;
    }
    return &State();
}

CWinApp::CWinApp(const char* appName) : m_pszAppName(appName != nullptr ? appName : kDefaultName) {
    m_previous = State().m_pCurrentWinApp;
    State().m_pCurrentWinApp = this;
}

CWinApp::~CWinApp() {
    CWinApp** link = &State().m_pCurrentWinApp;
    while (*link != nullptr && *link != this) link = &(*link)->m_previous;
    if (*link == this) *link = m_previous;
}

UINT CWinApp::GetProfileIntA(const char* section, const char* entry, int defaultValue) {
    return static_cast<UINT>(seam::GetSettingsStore()
                                 .GetProfileInt(system::OrEmpty(section), system::OrEmpty(entry))
                                 .value_or(defaultValue));
}

CString CWinApp::GetProfileStringA(const char* section, const char* entry, const char* defaultText) {
    const auto text = seam::GetSettingsStore().GetProfileText(system::OrEmpty(section), system::OrEmpty(entry));
    return text ? CString(text->c_str()) : CString(defaultText);
}

BOOL CWinApp::WriteProfileInt(const char* section, const char* entry, int value) {
    return seam::GetSettingsStore().SetProfileInt(system::OrEmpty(section), system::OrEmpty(entry), value);
}

BOOL CWinApp::WriteProfileStringA(const char* section, const char* entry, const char* text) {
    return seam::GetSettingsStore().SetProfileText(system::OrEmpty(section), system::OrEmpty(entry),
                                                   system::OrEmpty(text));
}

void CWinApp::DoWaitCursor(int code) {
    const int before = g_waitCursors;
    if (code > 0) ++g_waitCursors;
    if (code < 0 && g_waitCursors > 0) --g_waitCursors;
    if ((before == 0) != (g_waitCursors == 0)) seam::GetDesktop().SetWaitCursor(g_waitCursors > 0);
}

CWinApp* AfxGetApp() {
    return AfxGetModuleState()->m_pCurrentWinApp;
}
CWinThread* AfxGetThread() {
    return AfxGetApp();
}
CWnd* AfxGetMainWnd() {
    return AfxGetThread()->m_pMainWnd;
}
