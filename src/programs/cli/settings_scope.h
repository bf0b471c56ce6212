#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/settings/sqlite_settings_store.h"

namespace zel::cli {

/// Keeps the stored settings in a file for as long as it lives, which is opened when the module first asks for one.
class SettingsScope {
  public:
    /// @param directory  without it, the user's configuration directory.
    explicit SettingsScope(const std::optional<std::string>& directory)
        : m_store(directory ? std::filesystem::path(*directory) : settings::SqliteSettingsStore::UserDirectory()),
          m_before(seam::SetSettingsStore(&m_store)) {}
    ~SettingsScope() { seam::SetSettingsStore(m_before); }
    SettingsScope(const SettingsScope&) = delete;
    SettingsScope& operator=(const SettingsScope&) = delete;

    bool IsUsable() { return m_store.IsUsable(); }

    /// What a person should know of the settings; empty when all is well.
    const std::string& Note() const noexcept { return m_store.Note(); }

  private:
    settings::SqliteSettingsStore m_store;
    seam::SettingsStore* m_before;
};

}  // namespace zel::cli
