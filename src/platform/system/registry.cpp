#include "platform/system/registry.h"

#include <cstring>
#include <string>
#include <string_view>

#include "platform/seam/settings_store.h"
#include "platform/system/errors.h"

using namespace zel;

/// An open key: its path below the root.
struct HKEY__ {
    std::string path;
};

namespace {

HKEY__ g_currentUser;

LONG Result(DWORD error) {
    return static_cast<LONG>(error);
}

/// Path of a key below another; separators at the ends are removed.
std::string Join(HKEY key, const char* subKey) {
    std::string_view below = subKey != nullptr ? subKey : "";
    while (below.starts_with('\\')) below.remove_prefix(1);
    while (below.ends_with('\\')) below.remove_suffix(1);
    if (key->path.empty() || below.empty()) return key->path + std::string(below);
    return key->path + "\\" + std::string(below);
}

std::string NameOf(const char* name) {
    return name != nullptr ? name : "";
}

}  // namespace

const HKEY HKEY_CURRENT_USER = &g_currentUser;

LONG RegOpenKeyExA(HKEY key, const char* subKey, DWORD, REGSAM, HKEY* result) {
    if (key == nullptr || result == nullptr) return Result(ERROR_INVALID_PARAMETER);
    *result = nullptr;
    std::string path = Join(key, subKey);
    if (!seam::GetSettingsStore().KeyExists(path)) return Result(ERROR_FILE_NOT_FOUND);
    *result = new HKEY__{std::move(path)};
    return Result(ERROR_SUCCESS);
}

LONG RegCreateKeyExA(HKEY key, const char* subKey, DWORD, const char*, DWORD, REGSAM, const void*, HKEY* result,
                     DWORD* disposition) {
    if (key == nullptr || result == nullptr) return Result(ERROR_INVALID_PARAMETER);
    *result = nullptr;
    std::string path = Join(key, subKey);
    const bool existed = seam::GetSettingsStore().KeyExists(path);
    if (!existed && !seam::GetSettingsStore().CreateKey(path)) return Result(ERROR_ACCESS_DENIED);
    if (disposition != nullptr) *disposition = existed ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
    *result = new HKEY__{std::move(path)};
    return Result(ERROR_SUCCESS);
}

LONG RegQueryValueExA(HKEY key, const char* name, DWORD*, DWORD* type, BYTE* data, DWORD* size) {
    if (key == nullptr || (data != nullptr && size == nullptr)) return Result(ERROR_INVALID_PARAMETER);
    const auto value = seam::GetSettingsStore().GetValue(key->path, NameOf(name));
    if (!value) return Result(ERROR_FILE_NOT_FOUND);
    if (type != nullptr) *type = value->type;
    if (size == nullptr) return Result(ERROR_SUCCESS);
    const bool fits = data == nullptr || value->bytes.size() <= *size;
    *size = static_cast<DWORD>(value->bytes.size());
    if (!fits) return Result(ERROR_MORE_DATA);
    if (data != nullptr && !value->bytes.empty()) std::memcpy(data, value->bytes.data(), value->bytes.size());
    return Result(ERROR_SUCCESS);
}

LONG RegSetValueExA(HKEY key, const char* name, DWORD, DWORD type, const BYTE* data, DWORD size) {
    if (key == nullptr || (data == nullptr && size != 0)) return Result(ERROR_INVALID_PARAMETER);
    seam::RegistryValue value{type, {}};
    if (size != 0) value.bytes.assign(data, data + size);
    return Result(seam::GetSettingsStore().SetValue(key->path, NameOf(name), value) ? ERROR_SUCCESS
                                                                                    : ERROR_ACCESS_DENIED);
}

LONG RegDeleteKeyA(HKEY key, const char* subKey) {
    if (key == nullptr || subKey == nullptr) return Result(ERROR_INVALID_PARAMETER);
    const std::string path = Join(key, subKey);
    if (!seam::GetSettingsStore().KeyExists(path)) return Result(ERROR_FILE_NOT_FOUND);
    const bool deleted = !seam::GetSettingsStore().KeyHasSubKeys(path) && seam::GetSettingsStore().DeleteKey(path);
    return Result(deleted ? ERROR_SUCCESS : ERROR_ACCESS_DENIED);
}

LONG RegCloseKey(HKEY key) {
    if (key == nullptr) return Result(ERROR_INVALID_HANDLE);
    if (key != HKEY_CURRENT_USER) delete key;
    return Result(ERROR_SUCCESS);
}
