#pragma once

#include "platform/api.h"
#include "platform/framework/dialog_template.h"

/// How an extension module starts and stops on this system. At namespace scope, the module marks each static object
/// with a constructor, and names its two entry functions once:
///
///     ZEL_MODULE_STATIC CString CZelFont::m_SFontBrowseDir;
///     ZEL_MODULE_ENTRY(g_instance, RawAttachHook, MainEntry)
///
/// When the module is loaded, the hook is called with DLL_PROCESS_ATTACH, the marked objects are constructed, and the
/// main entry is called with DLL_PROCESS_ATTACH. When it is unloaded, the main entry is called with DLL_PROCESS_DETACH,
/// the objects are destroyed, and the hook is called with DLL_PROCESS_DETACH. With g++ a module is compiled with
/// -fno-gnu-unique; otherwise the loader never unloads it.

inline constexpr DWORD DLL_PROCESS_DETACH = 0, DLL_PROCESS_ATTACH = 1, DLL_THREAD_ATTACH = 2, DLL_THREAD_DETACH = 3;

namespace zel::framework {

using ModuleEntry = int (*)(HINSTANCE module, DWORD reason, void* reserved);

/// Calls an entry function on construction and on destruction. A static object of this class does so when the module is
/// loaded and unloaded.
class ZEL_PLATFORM_API ModuleLifetime {
  public:
    /// @param refusable  true if a result of 0 from DLL_PROCESS_ATTACH makes AfxLoadLibrary fail.
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

/// Loads a module.
/// @param path  a path of this system.
/// @return a handle for dlsym. Null if the file can't be loaded (last error ERROR_MOD_NOT_FOUND) or its main entry
///         returned 0 (ERROR_DLL_INIT_FAILED); it is unloaded then.
ZEL_PLATFORM_API void* AfxLoadLibrary(const char* path);
/// Unloads a module.
/// @return FALSE for a null handle or a failure.
ZEL_PLATFORM_API BOOL AfxFreeLibrary(void* library);
