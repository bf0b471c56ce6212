#pragma once

#include <filesystem>

#include "base/sqlite_database.h"

namespace zel::settings {

/// The database file of the stored settings, with its tables.
class SettingsDatabase : public base::SqliteDatabase {
  public:
    enum class State { kReady, kDamaged, kUnusable };

    /// Opens the file, which is created if it is missing. It contains a password that is easily read, so the file and
    /// its log are closed to other users.
    explicit SettingsDatabase(const std::filesystem::path& file);

    State GetState() const noexcept { return m_state; }

    /// Removes from the disk what the log still has of values that were deleted or replaced.
    /// @return false if another program is reading just now.
    bool EmptyLog();

  private:
    State Check();
    bool UseWriteAheadLog();
    bool MakeTables();

    State m_state;
};

}  // namespace zel::settings
