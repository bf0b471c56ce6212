#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "base/sqlite_database.h"
#include "host/library/library_access.h"

namespace zel::library {

/// A library's file, known to be one, with failures as LibraryError.
class LibraryFile {
  public:
    LibraryFile(const std::filesystem::path& file, Access access, std::chrono::milliseconds patience);

    base::SqliteStatement Prepare(const char* sql) { return m_database->Prepare(sql); }
    /// For a statement that writes and is used often: made once, kept, and ready to be bound again. It is run to its
    /// end each time.
    /// @param sql  a constant text.
    base::SqliteStatement& Kept(const char* sql);
    /// Moves to the next row; false behind the last.
    bool Next(base::SqliteStatement& statement) const;
    void Run(base::SqliteStatement& statement) const;
    void Run(const char* sql) const;
    std::int64_t LastRow() const { return m_database->LastRow(); }
    int Changes() const { return m_database->Changes(); }

    /// Does the work in one transaction: all of it is there when the call returns, or nothing after an exception.
    void Write(const std::function<void()>& work);
    /// Does the work on the state that the file has now, whatever others write meanwhile.
    void Read(const std::function<void()>& work);

    /// @throws LibraryError with the file's name in front of the reason.
    [[noreturn]] void Fail(const std::string& reason) const;

  private:
    void Open(Access access, std::chrono::milliseconds patience);
    void CheckHeader() const;
    void Make(std::chrono::milliseconds patience);
    void Protect(Access access);
    void CheckVersion(std::int64_t id, std::int64_t version) const;
    void CheckLayout();
    [[noreturn]] void FailAsDatabase() const;

    std::filesystem::path m_path;
    std::unique_ptr<base::SqliteDatabase> m_database;
    std::map<std::string_view, base::SqliteStatement> m_kept;
};

}  // namespace zel::library
