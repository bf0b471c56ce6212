#pragma once

#include <filesystem>

#include "base/sqlite_database.h"

namespace zel::settings {

/// The database file of the stored settings, with its tables.
class SettingsDatabase : public base::SqliteDatabase {
  public:
    enum class State { kReady, kDamaged, kUnusable };

    /// Opens the file, which is created if it is missing.
    explicit SettingsDatabase(const std::filesystem::path& file);

    State GetState() const noexcept { return m_state; }

  private:
    State Check();
    bool UseWriteAheadLog();
    bool MakeTables();

    State m_state;
};

}  // namespace zel::settings
