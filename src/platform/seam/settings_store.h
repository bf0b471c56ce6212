#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/api.h"

namespace zel::seam {

/// One value of the registry.
struct RegistryValue {
    std::uint32_t type = 0;  // REG_SZ ...
    std::vector<std::uint8_t> bytes;

    bool operator==(const RegistryValue&) const = default;
};

/// One entry of the profile: a number or a text.
struct ProfileEntry {
    std::string section;
    std::string entry;
    std::variant<int, std::string> value;
};

/// Storage of the application's profile and of the user's registry. Names are compared without regard to the case of
/// ASCII letters. Texts are bytes in no particular encoding. A write that returns true has been stored.
class ZEL_PLATFORM_API SettingsStore {
  public:
    virtual ~SettingsStore();

    /// Profile values; nothing when the entry is missing or has the other type. A write replaces a value of either type.
    virtual std::optional<int> GetProfileInt(const std::string& section, const std::string& entry) = 0;
    virtual std::optional<std::string> GetProfileText(const std::string& section, const std::string& entry) = 0;
    virtual bool SetProfileInt(const std::string& section, const std::string& entry, int value) = 0;
    virtual bool SetProfileText(const std::string& section, const std::string& entry, const std::string& text) = 0;

    /// All entries, by section and entry.
    virtual std::vector<ProfileEntry> ProfileEntries() = 0;
    /// @return false when there is no such entry or it can't be deleted.
    virtual bool DeleteProfileEntry(const std::string& section, const std::string& entry) = 0;

    /// Registry keys, by their path below the user's root: names joined by single backslashes, none at the ends. The
    /// root is "" and always exists.
    virtual bool KeyExists(const std::string& key) = 0;
    virtual bool KeyHasSubKeys(const std::string& key) = 0;
    /// Creates a key and every missing key above it.
    virtual bool CreateKey(const std::string& key) = 0;
    /// Deletes a key with its values. The caller ensures that it exists and has no keys below it.
    virtual bool DeleteKey(const std::string& key) = 0;

    /// Values of an existing key; nothing when there is no such value.
    virtual std::optional<RegistryValue> GetValue(const std::string& key, const std::string& name) = 0;
    virtual bool SetValue(const std::string& key, const std::string& name, const RegistryValue& value) = 0;
    /// Names of a key's values, in order.
    virtual std::vector<std::string> ValueNames(const std::string& key) = 0;
    /// @return false when there is no such value or it can't be deleted.
    virtual bool DeleteValue(const std::string& key, const std::string& name) = 0;
};

/// Makes a store the current one. The caller keeps it alive.
/// @param store  null for the default, a MemorySettingsStore of the process.
/// @return the previous one, null if that was the default.
ZEL_PLATFORM_API SettingsStore* SetSettingsStore(SettingsStore* store);
ZEL_PLATFORM_API SettingsStore& GetSettingsStore();

/// Sets the function that creates the default store. Called once, while the platform is loaded.
/// @return true, for the initialiser of a constant.
bool SetDefaultSettingsStore(SettingsStore* (*make)()) noexcept;

}  // namespace zel::seam
