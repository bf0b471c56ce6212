#pragma once

#include "module/contract/records/char_inf.h"
#include "module/contract/records/zeltrans_api.h"

/// Registers the host's callback for characters and the directory of the two name lists. To be called before any
/// import. The registration lasts until the next call.
/// @param callback  called for each character of an import; null for none.
/// @param map_dir   a buffer of 260 bytes, which is copied whole: the directory, in the module's form, ending in a
///                  backslash and a NUL; all zeros for the current directory. A buffer without a NUL is cut after 259
///                  bytes.
/// @return the callback registered before, null for none.
ZELTRANS_API zel::OnCharCallback Register_GLV_OnChar(zel::OnCharCallback callback, char* map_dir);

/// True while the Skip Warnings setting is on.
ZELTRANS_API bool IgnoreZelFontErrors();
/// Sets the Skip Warnings setting and stores it.
/// @param value  0 for off; stored as it is.
ZELTRANS_API void SaveWarningPref(int value);
/// Allows prompts for missing fonts again: clears CZelFont::m_bCancelFontBrowse.
ZELTRANS_API void CancelZelFontBrowse();
/// Pixels by which the rows of the last message were moved up; CZelFont::m_iZelYOffset.
ZELTRANS_API int ZelYOffset();
/// Sets CZelFont::m_iZelYOffset.
ZELTRANS_API void ZelYOffsetReset(int value);
