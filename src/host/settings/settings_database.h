#pragma once

#include <filesystem>

#include "base/sqlite_database.h"

namespace zel::settings {

/// The file of the stored settings, with the tables that it needs.
class SettingsDatabase : public base::SqliteDatabase {
  public:
    enum class State { kReady, kDamaged, kUnusable };

    /// Opens the file, which is made if it is missing.
    explicit SettingsDatabase(const std::filesystem::path& file);

    State GetState() const noexcept { return m_state; }

  private:
    State Check();
    bool MakeTables();

    State m_state;
};

}  // namespace zel::settings
