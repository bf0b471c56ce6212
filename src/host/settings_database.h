#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// One SQL statement that is being run. Values are bound and read in the order of the statement. A statement that could
/// not be made, or failed, has no rows and isn't done.
class SettingsStatement {
  public:
    SettingsStatement(sqlite3* database, const char* sql);

    SettingsStatement& Bind(std::string_view text);
    SettingsStatement& Bind(std::int64_t value);
    SettingsStatement& BindBytes(std::string_view bytes);

    bool Next();  ///< moves to the next row; false behind the last.
    bool Run();   ///< runs to the end; true when all was done.

    std::int64_t Int(int column) const;
    std::string Bytes(int column) const;

  private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
    int m_bound = 0;
    int m_result;
};

/// The file of the stored settings, with the tables that it needs.
class SettingsDatabase {
  public:
    enum class State { kReady, kDamaged, kUnusable };

    /// Opens the file, which is made if it is missing.
    explicit SettingsDatabase(const std::filesystem::path& file);

    State GetState() const noexcept { return m_state; }
    /// Words of the last failure.
    std::string Error() const;
    /// Number of rows that the last statement changed.
    int Changes() const;

    SettingsStatement Prepare(const char* sql) { return {m_handle.get(), sql}; }
    bool Run(const char* sql) { return Prepare(sql).Run(); }

  private:
    State Check();
    bool MakeTables();

    struct Close {
        void operator()(sqlite3* database) const noexcept;
    };
    std::unique_ptr<sqlite3, Close> m_handle;
    State m_state = State::kUnusable;
};

/// A transaction, undone unless it was committed.
class SettingsTransaction {
  public:
    explicit SettingsTransaction(SettingsDatabase& database)
        : m_database(database), m_open(database.Run("BEGIN IMMEDIATE")) {}
    ~SettingsTransaction() {
        if (m_open) m_database.Run("ROLLBACK");
    }
    SettingsTransaction(const SettingsTransaction&) = delete;
    SettingsTransaction& operator=(const SettingsTransaction&) = delete;

    bool IsOpen() const noexcept { return m_open; }
    bool Commit() {
        if (!m_open || !m_database.Run("COMMIT")) return false;
        m_open = false;
        return true;
    }

  private:
    SettingsDatabase& m_database;
    bool m_open;
};
