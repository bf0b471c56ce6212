#pragma once

#include "module/contract/records/char_inf.h"
#include "module/contract/records/zeltrans_api.h"

/// Registers the host's callback for characters and the directory of the two name lists.
/// @param callback  may be null: characters then go nowhere.
/// @param map_dir   at least 260 bytes, all of which are copied: a NUL-terminated directory that ends in a separator.
/// @return the callback registered before.
ZELTRANS_API zel::OnCharCallback Register_GLV_OnChar(zel::OnCharCallback callback, char* map_dir);

/// True while Skip Warnings is on.
ZELTRANS_API bool IgnoreZelFontErrors();
/// Sets Skip Warnings and stores it.
ZELTRANS_API void SaveWarningPref(int value);
/// Allows prompts for missing fonts again. (It clears the flag that the name speaks of.)
ZELTRANS_API void CancelZelFontBrowse();
/// Lines that the rows of the message last read were moved up by.
ZELTRANS_API int ZelYOffset();
ZELTRANS_API void ZelYOffsetReset(int value);
