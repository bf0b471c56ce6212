#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/settings/sqlite_settings_store.h"
#include "programs/cli/diagnostics.h"

namespace zel::cli {

/// Stores the module's settings in a file while it exists. The file is opened when the module first uses a setting.
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

    /// Why settings could not be read or stored; empty if there was no problem.
    const std::string& Note() const noexcept { return m_store.Note(); }
    void PrintAnyNote() const {
        if (!Note().empty()) PrintNote(Note());
    }

  private:
    settings::SqliteSettingsStore m_store;
    seam::SettingsStore* m_before;
};

}  // namespace zel::cli
