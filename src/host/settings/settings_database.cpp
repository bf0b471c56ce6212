#include "host/settings/settings_database.h"

#include <sqlite3.h>

namespace zel::settings {

namespace {

/// Version of the tables, stored in the file.
constexpr int kVersion = 1;

/// Names are compared without regard to the case of ASCII letters (NOCASE).
constexpr const char* kSchema[] = {
    "CREATE TABLE IF NOT EXISTS profile (section TEXT NOT NULL COLLATE NOCASE, entry TEXT NOT NULL COLLATE NOCASE,"
    " number INTEGER, text BLOB, PRIMARY KEY (section, entry)) WITHOUT ROWID",
    "CREATE TABLE IF NOT EXISTS registry_key (path TEXT NOT NULL COLLATE NOCASE PRIMARY KEY,"
    " parent TEXT NOT NULL COLLATE NOCASE) WITHOUT ROWID",
    "CREATE TABLE IF NOT EXISTS registry_value (path TEXT NOT NULL COLLATE NOCASE, name TEXT NOT NULL COLLATE NOCASE,"
    " type INTEGER NOT NULL, bytes BLOB NOT NULL, PRIMARY KEY (path, name)) WITHOUT ROWID",
};

bool IsDamage(int result) noexcept {
    return (result & 0xFF) == SQLITE_NOTADB || (result & 0xFF) == SQLITE_CORRUPT;
}

}  // namespace

SettingsDatabase::SettingsDatabase(const std::filesystem::path& file)
    : base::SqliteDatabase(file, Opening::kMake), m_state(Check()) {}

SettingsDatabase::State SettingsDatabase::Fail() {
    m_failure = Error();
    return IsDamage(ErrorCode()) ? State::kDamaged : State::kUnusable;
}

SettingsDatabase::State SettingsDatabase::Check() {
    if (ErrorCode() != SQLITE_OK) return m_failure = Error(), State::kUnusable;
    // A write-ahead log waits for the disk once per write, a rollback journal three times. The log remains when the
    // file is closed; the next program that opens the file continues it.
    sqlite3_db_config(Handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    if (!Run("PRAGMA journal_mode = WAL") || !Run("PRAGMA synchronous = FULL")) return Fail();
    {
        base::SqliteStatement check = Prepare("PRAGMA quick_check(1)");
        if (!check.Next()) return Fail();
        if (check.Bytes(0) != "ok") return State::kDamaged;
    }
    return MakeTables();
}

SettingsDatabase::State SettingsDatabase::MakeTables() {
    base::SqliteStatement version = Prepare("PRAGMA user_version");
    if (!version.Next()) return Fail();
    if (version.Int(0) == kVersion) return State::kReady;
    version.Run();
    base::SqliteTransaction transaction(*this);  // one wait for the disk, not one for each table
    bool made = transaction.IsOpen();
    for (const char* table : kSchema) made = made && Run(table);
    // The end of a failed transaction would replace the reason.
    return made && Run("PRAGMA user_version = 1") && transaction.Commit() ? State::kReady : Fail();
}

}  // namespace zel::settings
