#pragma once

#include "pipeline/zeltrans_api.h"
#include "platform/framework/cwinapp.h"
#include "platform/system/types.h"
#include "translate/char_inf.h"

// What outlives a call from the host: one instance per process, used on the user-interface thread only.

extern AFX_EXTENSION_MODULE ZelTransDLL;  ///< the module's record with the framework.
extern HINSTANCE g_hZelResource;          ///< the module's resources; its dialog templates are found through it.
extern OnCharCallback g_pfnOnChar;        ///< the registered callback, null for none.
extern char g_szMapDir[MAX_PATH];  ///< directory of the name lists, with its closing separator; always terminated.

/// Registers the host's callback for characters and the directory of the two name lists.
/// @param callback  may be null: characters then go nowhere.
/// @param map_dir   at least 260 bytes, all of which are copied: a NUL-terminated directory that ends in a separator.
/// @return the callback registered before.
ZELTRANS_API OnCharCallback Register_GLV_OnChar(OnCharCallback callback, char* map_dir);

/// True while Skip Warnings is on.
ZELTRANS_API bool IgnoreZelFontErrors();
/// Sets Skip Warnings and stores it.
ZELTRANS_API void SaveWarningPref(int value);
/// Allows prompts for missing fonts again. (It clears the flag that the name speaks of.)
ZELTRANS_API void CancelZelFontBrowse();
/// Lines that the rows of the message last read were moved up by.
ZELTRANS_API int ZelYOffset();
ZELTRANS_API void ZelYOffsetReset(int value);

/// Makes the module's resources the current ones for as long as it lives, or for good.
class ResourceSwitch {
  public:
    enum class After { kKeep, kRestore };
    explicit ResourceSwitch(After after);
    ~ResourceSwitch();
    ResourceSwitch(const ResourceSwitch&) = delete;
    ResourceSwitch& operator=(const ResourceSwitch&) = delete;

  private:
    HINSTANCE m_saved;
    After m_after;
};

/// Calls the registered callback; without one, does nothing.
void CallOnChar(CWnd* host, tag_CharInf* info, unsigned int character);
