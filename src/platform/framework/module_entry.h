#pragma once

#include "platform/api.h"
#include "platform/framework/dialog_template.h"

/// How an extension module starts and stops on this system. The module writes, at namespace scope in one of its
/// sources,
///
///     ZEL_MODULE_STATIC CString CZelFont::m_SFontBrowseDir;              // each static object that needs building
///     ZEL_MODULE_ENTRY(g_instance, RawAttachHook, MainEntry)
///
/// and when it is loaded, the hook is called first, then the marked statics are built, then the main entry is called,
/// both with DLL_PROCESS_ATTACH. When it goes, the main entry is called with DLL_PROCESS_DETACH, the statics die, and
/// the hook is called so. With g++ a module is compiled with -fno-gnu-unique, or the loader keeps it for good.

inline constexpr DWORD DLL_PROCESS_DETACH = 0, DLL_PROCESS_ATTACH = 1, DLL_THREAD_ATTACH = 2, DLL_THREAD_DETACH = 3;

namespace zel::framework {

using ModuleEntry = int (*)(HINSTANCE module, DWORD reason, void* reserved);

/// Calls an entry on construction and destruction; a static object of it is the module's link to its own load and
/// unload.
class ZEL_PLATFORM_API ModuleLifetime {
  public:
    /// @param refusable  whether a result of 0 on attach refuses the load.
    ModuleLifetime(HINSTANCE module, ModuleEntry entry, bool refusable);
    ~ModuleLifetime();

    ModuleLifetime(const ModuleLifetime&) = delete;
    ModuleLifetime& operator=(const ModuleLifetime&) = delete;

  private:
    HINSTANCE m_module;
    ModuleEntry m_entry;
};

}  // namespace zel::framework

#define ZEL_MODULE_STATIC [[gnu::init_priority(200)]]
#define ZEL_MODULE_ENTRY(instance, hook, entry)                                                                        \
    [[gnu::init_priority(101)]] static const zel::framework::ModuleLifetime g_moduleHook(&(instance), &(hook), false); \
    [[gnu::init_priority(300)]] static const zel::framework::ModuleLifetime g_moduleEntry(&(instance), &(entry), true);

/// Loads a module by a path of this system. The handle is that of the system's loader, fit for dlsym.
/// @return null when the file can't be loaded (last error 126) or its main entry returned 0 (1114); it is unloaded
/// again then.
ZEL_PLATFORM_API void* AfxLoadLibrary(const char* path);
/// Unloads a module. FALSE for a null handle or a failure.
ZEL_PLATFORM_API BOOL AfxFreeLibrary(void* library);
