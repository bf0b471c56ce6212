#include <new>

#include "module/resources/templates.h"
#include "module/state/module_state.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/module_entry.h"

namespace zel::pipeline {

namespace {

// Called before any static object of the module is constructed, so that the lists of classes and factories, which those
// objects extend, are empty at first. AfxInitExtensionModule restores the saved heads.
int RawAttachHook(HINSTANCE /*module*/, DWORD reason, void* /*reserved*/) {
    if (reason != DLL_PROCESS_ATTACH) return 1;
    AFX_MODULE_STATE* const state = AfxGetModuleState();
    state->m_pClassInit = state->m_classList.m_pHead;
    state->m_pFactoryInit = state->m_factoryList.m_pHead;
    state->m_classList.m_pHead = nullptr;
    state->m_factoryList.m_pHead = nullptr;
    return 1;
}

int MainEntry(HINSTANCE module, DWORD reason, void* /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        if (AfxInitExtensionModule(ZelTransDLL, module) == 0) return 0;
        g_hZelResource = ZelTransDLL.hResource;
        // The framework owns it. The module also works without it.
        [[maybe_unused]] const CDynLinkLibrary* library = new (std::nothrow) CDynLinkLibrary(ZelTransDLL, FALSE);
    } else if (reason == DLL_PROCESS_DETACH) {
        AfxTermExtensionModule(ZelTransDLL, FALSE);
    }
    return 1;
}

}  // namespace

ZEL_MODULE_ENTRY(resources::kModuleInstance, RawAttachHook, MainEntry)

}  // namespace zel::pipeline
