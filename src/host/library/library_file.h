#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "base/sqlite_database.h"
#include "host/library/library_access.h"

namespace zel::library {

/// The file of a library, checked to be one. All members throw LibraryError.
class LibraryFile {
  public:
    LibraryFile(const std::filesystem::path& file, Access access, std::chrono::milliseconds patience);

    base::SqliteStatement Prepare(const char* sql) { return m_database->Prepare(sql); }
    /// As SqliteDatabase::Cached.
    base::SqliteStatement& Cached(const char* sql) { return m_database->Cached(sql); }
    /// Moves to the next row; false after the last.
    bool Next(base::SqliteStatement& statement) const;
    void Run(base::SqliteStatement& statement) const;
    void Run(const char* sql) const;
    std::int64_t LastRow() const { return m_database->LastRow(); }
    int Changes() const { return m_database->Changes(); }

    /// The present version of the file, which another program may raise. Within a transaction it stays.
    int Version();

    /// Runs the work in one transaction: all of it is stored when the call returns, and nothing after an exception. A
    /// library of an earlier version gets the tables of this one in the same transaction.
    void Write(const std::function<void()>& work);
    /// Runs the work on one state of the file, whatever other programs write meanwhile.
    void Read(const std::function<void()>& work);

    /// Throws LibraryError with the file's name and the reason.
    [[noreturn]] void Fail(const std::string& reason) const;

  private:
    void Open(Access access, std::chrono::milliseconds patience);
    void CheckHeader() const;
    void Make();
    void Protect(Access access);
    void CheckVersion(std::int64_t id, std::int64_t version) const;
    void CheckLayout(int version);
    void Upgrade();
    [[noreturn]] void FailAsDatabase() const;

    std::filesystem::path m_path;
    std::unique_ptr<base::SqliteDatabase> m_database;
};

}  // namespace zel::library
