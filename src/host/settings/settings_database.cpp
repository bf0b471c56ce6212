#include "host/settings/settings_database.h"

#include <chrono>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include "base/file_descriptor.h"

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

/// Creates the file if it is missing, and takes permissions for other users from it and its log. A failure is visible
/// when the file is opened. An existing file isn't opened here: closing it would end the locks of this process.
const std::filesystem::path& ClosedToOthers(const std::filesystem::path& file) {
    constexpr mode_t kOthers = S_IRWXG | S_IRWXO;
    // SQLite would use the process's umask. It gives a log the permissions of its file.
    constexpr int kNewAlone = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    const base::FileDescriptor made(::open(file.c_str(), kNewAlone, S_IRUSR | S_IWUSR));
    if (made.IsOpen()) return file;
    for (const char* part : {"", "-wal", "-shm"}) {
        const std::string name = file.string() + part;
        struct stat status {};
        const bool found = ::stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode);
        if (found && (status.st_mode & kOthers) != 0) ::chmod(name.c_str(), status.st_mode & S_IRWXU);
    }
    return file;
}

}  // namespace

SettingsDatabase::SettingsDatabase(const std::filesystem::path& file)
    : base::SqliteDatabase(ClosedToOthers(file), Opening::kMake), m_state(Check()) {}

bool SettingsDatabase::EmptyLog() {
    base::SqliteStatement checkpoint = Prepare("PRAGMA wal_checkpoint(TRUNCATE)");
    return checkpoint.Next() && checkpoint.Int(0) == 0;
}

SettingsDatabase::State SettingsDatabase::Fail() {
    m_failure = Error();
    return IsDamage(ErrorCode()) ? State::kDamaged : State::kUnusable;
}

SettingsDatabase::State SettingsDatabase::Check() {
    if (ErrorCode() != SQLITE_OK) return m_failure = Error(), State::kUnusable;
    // A write-ahead log waits for the disk once per write, a rollback journal three times. The log remains when the
    // file is closed; the next program that opens the file continues it.
    sqlite3_db_config(Handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    // Deleted bytes are overwritten with zeros.
    if (!UseWriteAheadLog() || !Run("PRAGMA synchronous = FULL") || !Run("PRAGMA secure_delete = ON")) return Fail();
    {
        base::SqliteStatement check = Prepare("PRAGMA quick_check(1)");
        if (!check.Next()) return Fail();
        if (check.Bytes(0) != "ok") return State::kDamaged;
    }
    return MakeTables();
}

bool SettingsDatabase::UseWriteAheadLog() {
    // While another process makes the same change in a new file, SQLite fails at once instead of waiting for it.
    constexpr int kAttempts = 500;
    constexpr std::chrono::milliseconds kPause(10);
    for (int attempt = 1;; ++attempt) {
        if (Run("PRAGMA journal_mode = WAL")) return true;
        if ((ErrorCode() & 0xFF) != SQLITE_BUSY || attempt == kAttempts) return false;
        std::this_thread::sleep_for(kPause);
    }
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
