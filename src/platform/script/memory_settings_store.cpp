#include "platform/script/memory_settings_store.h"

#include <algorithm>

#include "base/fold_case.h"

namespace zel::script {

namespace {

template <class T, class Map>
std::optional<T> ProfileValue(const Map& profile, const std::string& section, const std::string& entry) {
    const auto found = profile.find({section, entry});
    if (found == profile.end() || !std::holds_alternative<T>(found->second)) return std::nullopt;
    return std::get<T>(found->second);
}

seam::SettingsStore* MakeDefaultStore() {
    return new MemorySettingsStore;
}
[[maybe_unused]] const bool g_store_is_set = seam::SetDefaultSettingsStore(&MakeDefaultStore);

}  // namespace

bool NameLess::operator()(std::string_view a, std::string_view b) const noexcept {
    return base::LessFolded(a, b);
}

bool NameLess::operator()(const std::pair<std::string, std::string>& a,
                          const std::pair<std::string, std::string>& b) const noexcept {
    if ((*this)(a.first, b.first)) return true;
    return !(*this)(b.first, a.first) && (*this)(a.second, b.second);
}

MemorySettingsStore::MemorySettingsStore() {
    m_keys[""];
}
MemorySettingsStore::~MemorySettingsStore() = default;

std::optional<int> MemorySettingsStore::GetProfileInt(const std::string& section, const std::string& entry) {
    return ProfileValue<int>(m_profile, section, entry);
}

std::optional<std::string> MemorySettingsStore::GetProfileText(const std::string& section, const std::string& entry) {
    return ProfileValue<std::string>(m_profile, section, entry);
}

bool MemorySettingsStore::SetProfileInt(const std::string& section, const std::string& entry, int value) {
    m_profile[{section, entry}] = value;
    return true;
}

bool MemorySettingsStore::SetProfileText(const std::string& section, const std::string& entry,
                                         const std::string& text) {
    m_profile[{section, entry}] = text;
    return true;
}

std::vector<seam::ProfileEntry> MemorySettingsStore::ProfileEntries() {
    std::vector<seam::ProfileEntry> entries;
    entries.reserve(m_profile.size());
    for (const auto& [names, value] : m_profile) entries.push_back({names.first, names.second, value});
    return entries;
}

bool MemorySettingsStore::DeleteProfileEntry(const std::string& section, const std::string& entry) {
    return m_profile.erase({section, entry}) == 1;
}

bool MemorySettingsStore::KeyExists(const std::string& key) {
    return m_keys.contains(key);
}

bool MemorySettingsStore::KeyHasSubKeys(const std::string& key) {
    const std::string prefix = key.empty() ? key : key + "\\";
    const auto isBelow = [&](const auto& entry) {
        const std::string_view path = entry.first;
        return path.size() > prefix.size() && base::EqualsFolded(path.substr(0, prefix.size()), prefix);
    };
    return std::any_of(m_keys.begin(), m_keys.end(), isBelow);
}

bool MemorySettingsStore::CreateKey(const std::string& key) {
    for (std::size_t end = key.find('\\'); end != std::string::npos; end = key.find('\\', end + 1))
        m_keys[key.substr(0, end)];
    m_keys[key];
    return true;
}

bool MemorySettingsStore::DeleteKey(const std::string& key) {
    return !key.empty() && m_keys.erase(key) == 1;
}

std::optional<seam::RegistryValue> MemorySettingsStore::GetValue(const std::string& key, const std::string& name) {
    const auto found = m_keys.find(key);
    if (found == m_keys.end()) return std::nullopt;
    const auto value = found->second.find(name);
    if (value == found->second.end()) return std::nullopt;
    return value->second;
}

bool MemorySettingsStore::SetValue(const std::string& key, const std::string& name, const seam::RegistryValue& value) {
    const auto found = m_keys.find(key);
    if (found == m_keys.end()) return false;
    found->second[name] = value;
    return true;
}

std::vector<std::string> MemorySettingsStore::ValueNames(const std::string& key) {
    std::vector<std::string> names;
    const auto found = m_keys.find(key);
    if (found == m_keys.end()) return names;
    for (const auto& [name, value] : found->second) names.push_back(name);
    return names;
}

bool MemorySettingsStore::DeleteValue(const std::string& key, const std::string& name) {
    const auto found = m_keys.find(key);
    return found != m_keys.end() && found->second.erase(name) == 1;
}

}  // namespace zel::script
