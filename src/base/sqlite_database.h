#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace zel::base {

/// One SQL statement. Values are bound and read in the statement's order. A statement that could not be prepared, or
/// failed, has no rows.
class SqliteStatement {
  public:
    SqliteStatement(sqlite3* database, const char* sql);

    SqliteStatement& Bind(std::string_view text);
    SqliteStatement& Bind(std::int64_t value);
    SqliteStatement& BindBytes(std::string_view bytes);
    SqliteStatement& BindNull();
    /// As Bind and BindBytes, without a copy: the caller keeps the bytes until the statement has run.
    SqliteStatement& BindKept(std::string_view text);
    SqliteStatement& BindKeptBytes(std::string_view bytes);

    /// Moves to the next row. @return false after the last row and after a failure.
    bool Next();
    /// Runs to the end. @return false after a failure.
    bool Run();
    /// Prepares the statement to be bound and run again.
    SqliteStatement& Again();
    bool Failed() const noexcept;

    bool IsNull(int column) const;
    std::int64_t Int(int column) const;
    double Real(int column) const;
    /// UTF-8, whatever the encoding of the file is.
    std::string Text(int column) const;
    std::string Bytes(int column) const;

  private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };
    SqliteStatement& Bound(int result);

    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
    int m_bound = 0;
    int m_result;
};

/// An SQLite file; here since the stores of settings and of recordings have no other room in common. After a failure to
/// open the file, every statement fails.
class SqliteDatabase {
  public:
    enum class Opening {
        /// The file must exist.
        kExisting,
        /// The file is created if it is missing.
        kMake,
        /// Nobody writes the file while it is open, and no file is made beside it.
        kImmutable,
        /// The database is in memory, and there is no file.
        kMemory,
    };

    /// @param file      ignored for kMemory.
    /// @param patience  how long a call waits for another process to end its write.
    SqliteDatabase(const std::filesystem::path& file, Opening opening,
                   std::chrono::milliseconds patience = std::chrono::seconds(5));

    /// Code and message of the last failure. After RollBack, of the failure before it, until the next Prepare.
    int ErrorCode() const;
    std::string Error() const;
    /// Number of rows that the last statement changed, and id of the last row that was inserted.
    int Changes() const;
    std::int64_t LastRow() const;

    SqliteStatement Prepare(const char* sql) {
        m_failure = 0;
        return {m_handle.get(), sql};
    }
    /// A statement that is used often. It is prepared once and returned with its parameters unbound. The caller runs it
    /// to its end, or resets it with SqliteReset: a query that waits at its row keeps the log from being emptied.
    /// @param sql  a string literal.
    SqliteStatement& Cached(const char* sql);
    bool Run(const char* sql) { return Prepare(sql).Run(); }
    /// Ends a transaction without storing its changes, if a failure hasn't ended it already.
    void RollBack() noexcept;

    /// The database as the bytes of a file; empty when there isn't enough memory.
    std::string Bytes() const;

    /// For calls that no statement can express. Owned; a file that couldn't be opened may have none.
    sqlite3* Handle() const noexcept { return m_handle.get(); }

  private:
    struct Close {
        void operator()(sqlite3* database) const noexcept;
    };
    std::unique_ptr<sqlite3, Close> m_handle;
    std::map<std::string_view, SqliteStatement> m_cached;
    /// The failure before RollBack; the code is 0 for none, the text empty when there was no memory for it.
    int m_failure = 0;
    std::string m_failure_text;
};

/// Resets a statement at the end of its scope, after its row has been read and also after an exception.
class SqliteReset {
  public:
    explicit SqliteReset(SqliteStatement& statement) noexcept : m_statement(statement) {}
    ~SqliteReset() { m_statement.Again(); }
    SqliteReset(const SqliteReset&) = delete;
    SqliteReset& operator=(const SqliteReset&) = delete;

  private:
    SqliteStatement& m_statement;
};

/// A transaction, rolled back unless it was committed.
class SqliteTransaction {
  public:
    /// @param begin  "BEGIN" for a transaction that only reads.
    explicit SqliteTransaction(SqliteDatabase& database, const char* begin = "BEGIN IMMEDIATE")
        : m_database(database), m_open(database.Run(begin)) {}
    ~SqliteTransaction() {
        if (m_open) m_database.RollBack();
    }
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;

    bool IsOpen() const noexcept { return m_open; }
    bool Commit() {
        if (!m_open || !m_database.Run("COMMIT")) return false;
        m_open = false;
        return true;
    }

  private:
    SqliteDatabase& m_database;
    bool m_open;
};

/// The version of the loaded library, such as "3.40.1".
const char* SqliteVersion() noexcept;

}  // namespace zel::base
