#include "host/library/library_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <span>
#include <system_error>
#include <vector>

#include <sqlite3.h>
#include <unistd.h>

#include "base/regular_file.h"
#include "base/whole_file.h"
#include "host/library/library_schema.h"

namespace zel::library {

namespace {

namespace fs = std::filesystem;

/// Limit of a text, a picture and a row, in bytes. A picture of 720 x 576 pixels has less than 2 MB.
constexpr int kLongestCell = 64 << 20;
/// Larger than the default: documents and pictures have tens of kilobytes, and each page costs a system call.
constexpr const char* kPageSize = "PRAGMA page_size = 8192";

/// The header of an SQLite file: its size, and the offsets of the two bytes that are 2 for a file with a write-ahead
/// log.
constexpr std::size_t kHeaderSize = 100, kWriteVersion = 18, kReadVersion = 19;
constexpr char kWalVersion = 2;

std::string Errno(int error) {
    return error != 0 ? ": " + std::generic_category().message(error) : "";
}

/// SQLite's message, which may quote the file, without bytes that could control a terminal.
std::string MessageText(const base::SqliteDatabase& database) {
    std::string text = database.Error();
    std::ranges::replace_if(
        text, [](char c) { return c < ' ' || c > '~'; }, '?');
    return text;
}

/// Why SQLite failed, as text to follow the file's name.
std::string Reason(const base::SqliteDatabase& database) {
    const std::string errno_words = Errno(database.Handle() != nullptr ? sqlite3_system_errno(database.Handle()) : 0);
    switch (database.ErrorCode() & 0xFF) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return "another program keeps the library locked";
        case SQLITE_FULL:
            return "the disk is full";
        case SQLITE_READONLY:
            return "the library can't be written";
        case SQLITE_CANTOPEN:
            return "the library, or its log beside it, can't be opened" + errno_words;
        case SQLITE_IOERR:
            return "the library can't be read or written" + errno_words;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return "the library is damaged: " + MessageText(database);
        default:
            return MessageText(database);
    }
}

std::uint32_t BigEndian(std::span<const std::uint8_t> header, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | header[offset + i];
    return value;
}

bool MakeTables(base::SqliteDatabase& database) {
    bool made = database.Run(kPageSize);
    base::SqliteTransaction transaction(database);
    made = made && transaction.IsOpen();
    for (const char* table : LibrarySchema(kLibraryVersion)) made = made && database.Run(table);
    const std::string id = "PRAGMA application_id = " + std::to_string(kLibraryId);
    const std::string version = "PRAGMA user_version = " + std::to_string(kLibraryVersion);
    return made && database.Run(id.c_str()) && database.Run(version.c_str()) && transaction.Commit();
}

bool HasLog(const fs::path& file) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file.string() + "-wal", error);
    return !error && size != 0;
}

}  // namespace

LibraryFile::LibraryFile(const fs::path& file, Access access, std::chrono::milliseconds patience) : m_path(file) {
    std::error_code error;
    const bool there = fs::exists(file, error);
    if (!there && !error && access == Access::kWrite) Make();
    CheckHeader();
    Open(access, patience);
    Protect(access);
    // In one state of the file, since another program may write the next version.
    Read([this] {
        base::SqliteStatement id = Prepare("PRAGMA application_id");
        if (!Next(id)) FailAsDatabase();
        const int version = Version();
        CheckVersion(id.Int(0), version);
        CheckLayout(version);
    });
    sqlite3_db_config(m_database->Handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
}

void LibraryFile::CheckHeader() const {
    // Checked before SQLite opens the file, since opening may write to it.
    const std::string other_kind = base::OtherFileKind(m_path);
    if (!other_kind.empty()) Fail("it is " + other_kind + ", not a library");
    std::vector<std::uint8_t> header;
    try {
        header = base::ReadFileBytes(m_path, kHeaderSize);
    } catch (const std::runtime_error& failure) {
        Fail(std::string("the library can't be opened: ") + failure.what());
    }
    constexpr char kMagic[] = "SQLite format 3";
    if (header.size() != kHeaderSize || std::memcmp(header.data(), kMagic, sizeof kMagic) != 0) {
        Fail("it is not a library of recorded messages");
    }
    CheckVersion(BigEndian(header, 68), static_cast<std::int32_t>(BigEndian(header, 60)));
}

void LibraryFile::CheckVersion(std::int64_t id, std::int64_t version) const {
    if (id != kLibraryId) Fail("it is another program's database, not a library of recorded messages");
    if (version < 1 || version > kLibraryVersion) {
        Fail("the library has version " + std::to_string(version) + ", and this program reads the versions 1 to " +
             std::to_string(kLibraryVersion));
    }
}

void LibraryFile::CheckLayout(int version) {
    // Anything else that the file defines, such as a trigger, would run as part of our statements. The tables of the
    // full text search belong to SQLite.
    base::SqliteStatement query = Prepare(
        "SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL AND substr(name, 1, 7) <> 'sqlite_'"
        " AND (type <> 'table' OR substr(name, 1, 7) <> 'search_')");
    std::vector<std::string> found;
    while (Next(query)) found.push_back(query.Text(0));
    std::vector<std::string> expected(LibrarySchema(version).begin(), LibrarySchema(version).end());
    std::ranges::sort(found);
    std::ranges::sort(expected);
    if (found != expected) Fail("the library's tables are not those of its version");
}

void LibraryFile::Make() {
    if (m_path.filename().empty()) Fail("it is a directory, not a library");
    // The tables are made in memory, so that the file never exists without them.
    base::SqliteDatabase database(":memory:", base::SqliteDatabase::Opening::kMemory);
    std::string bytes = MakeTables(database) ? database.Bytes() : "";
    if (bytes.size() < kHeaderSize) Fail("the library can't be made: " + Reason(database));
    bytes[kWriteVersion] = bytes[kReadVersion] = kWalVersion;
    if (const std::error_code error = base::MakeDirectoriesTo(m_path))
        Fail("the directory of the library can't be made: " + error.message());
    base::UnfinishedFile file(m_path);
    // A library that another program has made meanwhile is kept.
    if (!file.IsOpen() || !file.Write(bytes) || !file.Sync() ||
        (!file.Commit(base::UnfinishedFile::Existing::kKeep) && errno != EEXIST)) {
        Fail("the library can't be made" + Errno(errno));
    }
}

void LibraryFile::Open(Access access, std::chrono::milliseconds patience) {
    using Opening = base::SqliteDatabase::Opening;
    m_database = std::make_unique<base::SqliteDatabase>(m_path, Opening::kExisting, patience);
    // The file must not be changed before it is known to be a library.
    if (m_database->ErrorCode() == SQLITE_OK) {
        sqlite3_db_config(m_database->Handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    }
    if (m_database->Run("PRAGMA schema_version")) return;
    const int code = m_database->ErrorCode() & 0xFF;
    const bool refused = code == SQLITE_CANTOPEN || code == SQLITE_READONLY;
    if (!refused || access != Access::kRead || HasLog(m_path)) FailAsDatabase();
    // In a read-only directory SQLite can't create its log; the file is opened without one.
    m_database = std::make_unique<base::SqliteDatabase>(m_path, Opening::kImmutable, patience);
}

void LibraryFile::Protect(Access access) {
    sqlite3* handle = m_database->Handle();
    for (const auto& [option, value] : {std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1},
                                        {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                        {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
                                        {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
                                        {SQLITE_DBCONFIG_ENABLE_FKEY, 1}}) {
        sqlite3_db_config(handle, option, value, nullptr);
    }
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, kLongestCell);
    Run("PRAGMA cell_size_check = ON");
    if (access == Access::kRead) {
        Run("PRAGMA query_only = ON");
        return;
    }
    if (sqlite3_db_readonly(handle, "main") != 0) Fail("the library can't be written");
    Run("PRAGMA journal_mode = WAL");
    Run("PRAGMA synchronous = FULL");
    // In KiB, half the default: what is written is rarely read again.
    Run("PRAGMA cache_size = -1024");
}

bool LibraryFile::Next(base::SqliteStatement& statement) const {
    const bool row = statement.Next();
    if (!row && statement.Failed()) FailAsDatabase();
    return row;
}

void LibraryFile::Run(base::SqliteStatement& statement) const {
    if (!statement.Run()) FailAsDatabase();
}

void LibraryFile::Run(const char* sql) const {
    if (!m_database->Run(sql)) FailAsDatabase();
}

void LibraryFile::Write(const std::function<void()>& work) {
    base::SqliteTransaction transaction(*m_database);
    if (!transaction.IsOpen()) FailAsDatabase();
    if (Version() < kLibraryVersion) Upgrade();
    work();
    if (!transaction.Commit()) FailAsDatabase();
}

int LibraryFile::Version() {
    base::SqliteStatement& version = Cached("PRAGMA user_version");
    const base::SqliteReset reset(version);
    if (!Next(version)) FailAsDatabase();
    return static_cast<int>(version.Int(0));
}

void LibraryFile::Upgrade() {
    const std::size_t present = LibrarySchema(Version()).size();
    for (const char* sql : LibrarySchema(kLibraryVersion).subspan(present)) Run(sql);
    Run(("PRAGMA user_version = " + std::to_string(kLibraryVersion)).c_str());
}

void LibraryFile::Read(const std::function<void()>& work) {
    const base::SqliteTransaction transaction(*m_database, "BEGIN");
    if (!transaction.IsOpen()) FailAsDatabase();
    work();
}

void LibraryFile::Fail(const std::string& reason) const {
    throw LibraryError(m_path.string() + ": " + reason);
}

void LibraryFile::FailAsDatabase() const {
    Fail(Reason(*m_database));
}

}  // namespace zel::library
