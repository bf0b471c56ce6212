#include "platform/framework/cwinapp.h"

#include "platform/framework/message_box.h"
#include "platform/seam/desktop.h"
#include "platform/seam/settings_store.h"
#include "platform/system/text.h"

using namespace zel;

namespace {

constexpr const char* kDefaultName = "Tavro";
int g_waitCursors = 0;

AFX_MODULE_STATE& State() {
    static auto& state = *new AFX_MODULE_STATE;  // outlives every module
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

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HINSTANCE module) {
    if (module == nullptr) return FALSE;
    if (state.bInitialized) return TRUE;
    AFX_MODULE_STATE& shared = *AfxGetModuleState();
    state = {TRUE, module, module, shared.m_classList.GetHead(), shared.m_factoryList.GetHead()};
    shared.m_classList.m_pHead = shared.m_pClassInit;
    shared.m_factoryList.m_pHead = shared.m_pFactoryInit;
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL) {
    if (!state.bInitialized) return;
    CDynLinkLibrary* library = State().m_libraryList.GetHead();
    while (library != nullptr) {
        CDynLinkLibrary* const next = library->m_pNextDLL;
        if (library->m_hModule == state.hModule) delete library;
        library = next;
    }
    if (State().m_hCurrentResourceHandle == state.hResource) State().m_hCurrentResourceHandle = nullptr;
    state = {};
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system)
    : m_hModule(state.hModule),
      m_hResource(state.hResource),
      m_bSystem(system),
      m_pNextDLL(State().m_libraryList.m_pHead) {
    State().m_libraryList.m_pHead = this;
}

CDynLinkLibrary::~CDynLinkLibrary() {
    CDynLinkLibrary** link = &State().m_libraryList.m_pHead;
    while (*link != nullptr && *link != this) link = &(*link)->m_pNextDLL;
    if (*link == this) *link = m_pNextDLL;
}

CObject::~CObject() = default;

void CCmdTarget::BeginWaitCursor() {
    AfxGetApp()->DoWaitCursor(1);
}
void CCmdTarget::EndWaitCursor() {
    AfxGetApp()->DoWaitCursor(-1);
}

CWaitCursor::CWaitCursor() {
    AfxGetApp()->DoWaitCursor(1);
}
CWaitCursor::~CWaitCursor() {
    AfxGetApp()->DoWaitCursor(-1);
}

int MessageBoxA(HWND owner, const char* text, const char* caption, UINT style) {
    return seam::GetDesktop().ShowMessageBox(owner, system::OrEmpty(text), caption != nullptr ? caption : "Error",
                                             style);
}

int AfxMessageBox(const char* text, UINT type, UINT) {
    return MessageBoxA(nullptr, text, AfxGetApp()->m_pszAppName, type);
}
