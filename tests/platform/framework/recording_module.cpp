#include <cstdlib>
#include <string>
#include <utility>

#include "platform/framework/cwinapp.h"
#include "platform/framework/extension_module.h"
#include "platform/framework/module_entry.h"

namespace zel::test {

// Appends each event to the environment variable MODULE_TRACE, which remains after the module is unloaded.

namespace {

void Record(const std::string& event) {
    const char* const before = std::getenv("MODULE_TRACE");
    ::setenv("MODULE_TRACE", ((before != nullptr ? before : "") + event + " ").c_str(), 1);
}

struct Static {
    Static() { Record("static"); }
    ~Static() { Record("~static"); }
};

AFX_EXTENSION_MODULE g_record{};
constexpr HINSTANCE__ g_instance{"recording", {}};

int Hook(HINSTANCE, DWORD reason, void*) {
    Record("hook" + std::to_string(reason));
    if (reason != DLL_PROCESS_ATTACH) return 1;
    AFX_MODULE_STATE& state = *AfxGetModuleState();
    state.m_pClassInit = std::exchange(state.m_classList.m_pHead, nullptr);
    return 1;
}

int Entry(HINSTANCE module, DWORD reason, void*) {
    Record("entry" + std::to_string(reason));
    if (reason == DLL_PROCESS_DETACH) AfxTermExtensionModule(g_record);
    if (reason != DLL_PROCESS_ATTACH) return 1;
    if (AfxInitExtensionModule(g_record, module) == FALSE) return 0;
    new CDynLinkLibrary(g_record);
#ifdef REFUSES_TO_LOAD
    return 0;
#else
    return 1;
#endif
}

ZEL_MODULE_STATIC Static g_static;

}  // namespace

ZEL_MODULE_ENTRY(g_instance, Hook, Entry)

}  // namespace zel::test
