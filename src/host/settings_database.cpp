#include "host/settings_database.h"

#include <sqlite3.h>

namespace {

/// Milliseconds that a call waits for a second process to end its write.
constexpr int kBusyTimeout = 5000;

/// Of the tables below, kept in the file.
constexpr std::int64_t kVersion = 1;

/// Names are compared without regard to the case of ASCII letters, which is what NOCASE does.
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

void SettingsStatement::Finalize::operator()(sqlite3_stmt* statement) const noexcept {
    sqlite3_finalize(statement);
}

SettingsStatement::SettingsStatement(sqlite3* database, const char* sql) {
    sqlite3_stmt* statement = nullptr;
    m_result = sqlite3_prepare_v2(database, sql, -1, &statement, nullptr);
    m_statement.reset(statement);
}

SettingsStatement& SettingsStatement::Bind(std::string_view text) {
    if (m_statement) {
        sqlite3_bind_text(m_statement.get(), ++m_bound, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
    return *this;
}

SettingsStatement& SettingsStatement::Bind(std::int64_t value) {
    if (m_statement) sqlite3_bind_int64(m_statement.get(), ++m_bound, value);
    return *this;
}

SettingsStatement& SettingsStatement::BindBytes(std::string_view bytes) {
    // A null address would bind NULL.
    const char* data = bytes.empty() ? "" : bytes.data();
    if (m_statement) {
        sqlite3_bind_blob(m_statement.get(), ++m_bound, data, static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
    }
    return *this;
}

bool SettingsStatement::Next() {
    if (!m_statement) return false;
    m_result = sqlite3_step(m_statement.get());
    return m_result == SQLITE_ROW;
}

bool SettingsStatement::Run() {
    while (Next()) {
    }
    return m_result == SQLITE_DONE;
}

std::int64_t SettingsStatement::Int(int column) const {
    return sqlite3_column_int64(m_statement.get(), column);
}

std::string SettingsStatement::Bytes(int column) const {
    const void* data = sqlite3_column_blob(m_statement.get(), column);
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    return data == nullptr ? std::string()
                           : std::string(static_cast<const char*>(data), static_cast<std::size_t>(size));
}

void SettingsDatabase::Close::operator()(sqlite3* database) const noexcept {
    sqlite3_close_v2(database);
}

SettingsDatabase::SettingsDatabase(const std::filesystem::path& file) {
    sqlite3* handle = nullptr;
    const int result = sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    m_handle.reset(handle);
    if (result == SQLITE_OK) m_state = Check();
}

SettingsDatabase::State SettingsDatabase::Check() {
    sqlite3_extended_result_codes(m_handle.get(), 1);
    sqlite3_busy_timeout(m_handle.get(), kBusyTimeout);
    // A write-ahead log costs one wait for the disk at each write, a rollback journal three. The log stays when the
    // file is closed: whoever opens the file next takes it over.
    sqlite3_db_config(m_handle.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    bool good = Run("PRAGMA journal_mode = WAL") && Run("PRAGMA synchronous = FULL");
    {
        SettingsStatement check = Prepare("PRAGMA quick_check(1)");
        const bool answered = good && check.Next();
        if (answered && check.Bytes(0) != "ok") return State::kDamaged;
        good = answered;
    }
    if (good && MakeTables()) return State::kReady;
    return IsDamage(sqlite3_errcode(m_handle.get())) ? State::kDamaged : State::kUnusable;
}

bool SettingsDatabase::MakeTables() {
    SettingsStatement version = Prepare("PRAGMA user_version");
    if (!version.Next()) return false;
    if (version.Int(0) == kVersion) return true;
    version.Run();
    SettingsTransaction transaction(*this);  // one wait for the disk, not one for each table
    bool made = transaction.IsOpen();
    for (const char* table : kSchema) made = made && Run(table);
    return made && Run("PRAGMA user_version = 1") && transaction.Commit();
}

std::string SettingsDatabase::Error() const {
    return m_handle ? sqlite3_errmsg(m_handle.get()) : "out of memory";
}

int SettingsDatabase::Changes() const {
    return sqlite3_changes(m_handle.get());
}
