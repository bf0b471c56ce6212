#pragma once

#include <map>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/seam/settings_store.h"

namespace zel::script {

/// Orders names without regard to the case of ASCII letters.
struct ZEL_PLATFORM_API NameLess {
    bool operator()(std::string_view a, std::string_view b) const noexcept;
    bool operator()(const std::pair<std::string, std::string>& a,
                    const std::pair<std::string, std::string>& b) const noexcept;
};

/// Settings in memory, for the lifetime of the object.
class ZEL_PLATFORM_API MemorySettingsStore : public seam::SettingsStore {
  public:
    MemorySettingsStore();
    ~MemorySettingsStore() override;

    std::optional<int> GetProfileInt(const std::string& section, const std::string& entry) override;
    std::optional<std::string> GetProfileText(const std::string& section, const std::string& entry) override;
    bool SetProfileInt(const std::string& section, const std::string& entry, int value) override;
    bool SetProfileText(const std::string& section, const std::string& entry, const std::string& text) override;
    std::vector<seam::ProfileEntry> ProfileEntries() override;
    bool DeleteProfileEntry(const std::string& section, const std::string& entry) override;

    bool KeyExists(const std::string& key) override;
    bool KeyHasSubKeys(const std::string& key) override;
    bool CreateKey(const std::string& key) override;
    bool DeleteKey(const std::string& key) override;
    std::optional<seam::RegistryValue> GetValue(const std::string& key, const std::string& name) override;
    bool SetValue(const std::string& key, const std::string& name, const seam::RegistryValue& value) override;
    std::vector<std::string> ValueNames(const std::string& key) override;
    bool DeleteValue(const std::string& key, const std::string& name) override;

  private:
    std::map<std::pair<std::string, std::string>, std::variant<int, std::string>, NameLess> m_profile;
    std::map<std::string, std::map<std::string, seam::RegistryValue, NameLess>, NameLess> m_keys;
};

}  // namespace zel::script
