#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/settings/sqlite_settings_store.h"

/// Keeps the stored settings in a file for as long as it lives, which is opened when the module first asks for one.
class SettingsScope {
  public:
    /// @param directory  without it, the user's configuration directory.
    explicit SettingsScope(const std::optional<std::string>& directory)
        : m_store(directory ? std::filesystem::path(*directory) : SqliteSettingsStore::UserDirectory()),
          m_before(SetSettingsStore(&m_store)) {}
    ~SettingsScope() { SetSettingsStore(m_before); }
    SettingsScope(const SettingsScope&) = delete;
    SettingsScope& operator=(const SettingsScope&) = delete;

    bool IsUsable() { return m_store.IsUsable(); }

    /// What a person should know of the settings; empty when all is well.
    const std::string& Note() const noexcept { return m_store.Note(); }

  private:
    SqliteSettingsStore m_store;
    SettingsStore* m_before;
};
