#pragma once

#include <filesystem>
#include <string>

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
    /// Why the file is unusable.
    const std::string& Failure() const noexcept { return m_failure; }

    /// Removes from the disk what the log still has of values that were deleted or replaced.
    /// @return false if another program is reading just now.
    bool EmptyLog();

  private:
    State Check();
    bool UseWriteAheadLog();
    State MakeTables();
    /// The state after a call of SQLite that failed.
    State Fail();

    // Assigned by Check.
    std::string m_failure;
    State m_state;
};

}  // namespace zel::settings
