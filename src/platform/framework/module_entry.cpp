#include "platform/framework/module_entry.h"

#include <utility>

#include <dlfcn.h>

#include "platform/system/errors.h"

namespace {

// A main entry has returned 0 since the last load began.
bool g_refused = false;

}  // namespace

namespace zel::framework {

ModuleLifetime::ModuleLifetime(HINSTANCE module, ModuleEntry entry, bool refusable) : m_module(module), m_entry(entry) {
    if (m_entry(m_module, DLL_PROCESS_ATTACH, nullptr) == 0 && refusable) g_refused = true;
}

ModuleLifetime::~ModuleLifetime() {
    m_entry(m_module, DLL_PROCESS_DETACH, nullptr);
}

}  // namespace zel::framework

void* AfxLoadLibrary(const char* path) {
    g_refused = false;
    void* const library = path != nullptr ? ::dlopen(path, RTLD_NOW | RTLD_LOCAL) : nullptr;
    if (library == nullptr) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    if (!std::exchange(g_refused, false)) return library;
    ::dlclose(library);
    SetLastError(ERROR_DLL_INIT_FAILED);
    return nullptr;
}

BOOL AfxFreeLibrary(void* library) {
    return library != nullptr && ::dlclose(library) == 0;
}
