#include "module/state/recent_entry.h"

#include <cstring>

#include "module/contract/stored_settings.h"
#include "platform/system/errors.h"
#include "platform/system/registry.h"

namespace zel::state {

static_assert(stored::kMaxRecentText == MAX_PATH - 1, "the buffers have one more for the NUL");

CString RecentListKey(const char* list) {
    CString key;
    key.Format("%s\\%s", stored::kRecentListsKey, list);
    return key;
}

CString RecentEntryName(const char* list, int index) {
    CString name;
    name.Format("%s %1d", list, index);
    return name;
}

bool ReadRecentEntry(const char* list, int index, char (&out)[MAX_PATH]) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, RecentListKey(list), 0, KEY_ALL_ACCESS, &key) != ERROR_SUCCESS) return false;
    const CString name = RecentEntryName(list, index);
    char text[MAX_PATH] = {};
    DWORD type = 0, size = 0;
    const bool read =
        RegQueryValueExA(key, name, nullptr, &type, nullptr, &size) == ERROR_SUCCESS && size <= sizeof text &&
        RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(text), &size) == ERROR_SUCCESS;
    RegCloseKey(key);
    if (!read || std::memchr(text, '\0', sizeof text) == nullptr) return false;
    std::memcpy(out, text, sizeof text);
    return true;
}

}  // namespace zel::state
