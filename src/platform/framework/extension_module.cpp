#include "platform/framework/extension_module.h"

#include "platform/framework/cwinapp.h"

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
    AFX_MODULE_STATE& shared = *AfxGetModuleState();
    CDynLinkLibrary* library = shared.m_libraryList.GetHead();
    while (library != nullptr) {
        CDynLinkLibrary* const next = library->m_pNextDLL;
        if (library->m_hModule == state.hModule) delete library;
        library = next;
    }
    if (shared.m_hCurrentResourceHandle == state.hResource) shared.m_hCurrentResourceHandle = nullptr;
    state = {};
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system)
    : m_hModule(state.hModule),
      m_hResource(state.hResource),
      m_bSystem(system),
      m_pNextDLL(AfxGetModuleState()->m_libraryList.m_pHead) {
    AfxGetModuleState()->m_libraryList.m_pHead = this;
}

CDynLinkLibrary::~CDynLinkLibrary() {
    CDynLinkLibrary** link = &AfxGetModuleState()->m_libraryList.m_pHead;
    while (*link != nullptr && *link != this) link = &(*link)->m_pNextDLL;
    if (*link == this) *link = m_pNextDLL;
}
