#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace zel::base {

/// One SQL statement that is being run. Values are bound and read in the order of the statement. A statement that could
/// not be made, or failed, has no rows and isn't done.
class SqliteStatement {
  public:
    SqliteStatement(sqlite3* database, const char* sql);

    SqliteStatement& Bind(std::string_view text);
    SqliteStatement& Bind(std::int64_t value);
    SqliteStatement& BindBytes(std::string_view bytes);
    SqliteStatement& BindNull();

    bool Next();               ///< moves to the next row; false behind the last.
    bool Run();                ///< runs to the end; true when all was done.
    SqliteStatement& Again();  ///< ready to be bound and run once more.
    bool Failed() const noexcept;

    bool IsNull(int column) const;
    std::int64_t Int(int column) const;
    std::string Text(int column) const;  ///< UTF-8, whatever the file's own encoding is.
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

/// An SQLite file. One that couldn't be opened gives statements that fail.
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

    /// @param patience  how long a call waits for a second process to end its write.
    SqliteDatabase(const std::filesystem::path& file, Opening opening,
                   std::chrono::milliseconds patience = std::chrono::seconds(5));

    /// Code and message of the last failure.
    int ErrorCode() const;
    std::string Error() const;
    /// Number of rows that the last statement changed, and number of the last row that was inserted.
    int Changes() const;
    std::int64_t LastRow() const;

    SqliteStatement Prepare(const char* sql) { return {m_handle.get(), sql}; }
    bool Run(const char* sql) { return Prepare(sql).Run(); }

    /// The database as the bytes of a file; empty when there isn't enough memory.
    std::string Bytes() const;

    /// For calls that no statement can express. Owned; a file that couldn't be opened may have none.
    sqlite3* Handle() const noexcept { return m_handle.get(); }

  private:
    struct Close {
        void operator()(sqlite3* database) const noexcept;
    };
    std::unique_ptr<sqlite3, Close> m_handle;
};

/// A transaction, undone unless it was committed.
class SqliteTransaction {
  public:
    /// @param begin  one that only reads begins with BEGIN alone.
    explicit SqliteTransaction(SqliteDatabase& database, const char* begin = "BEGIN IMMEDIATE")
        : m_database(database), m_open(database.Run(begin)) {}
    ~SqliteTransaction() {
        if (m_open) m_database.Run("ROLLBACK");
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

}  // namespace zel::base
