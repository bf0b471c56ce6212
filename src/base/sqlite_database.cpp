#include "base/sqlite_database.h"

#include <new>

#include <sqlite3.h>

namespace zel::base {

namespace {

/// An absolute path, which SQLite can't take for one of its special names, such as :memory: or a URI.
std::string PlainName(const std::filesystem::path& file) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(file, error);
    return error ? file.string() : absolute.string();
}

std::string ImmutableName(const std::filesystem::path& file) {
    std::string uri = "file://";
    for (const char c : PlainName(file)) {
        constexpr char kDigits[] = "0123456789ABCDEF";
        if (c != '%' && c != '?' && c != '#') {
            uri += c;
        } else {
            uri += {'%', kDigits[c >> 4 & 15], kDigits[c & 15]};
        }
    }
    return uri + "?immutable=1";
}

using Opening = SqliteDatabase::Opening;

std::string NameFor(const std::filesystem::path& file, Opening opening) {
    if (opening == Opening::kMemory) return ":memory:";
    return opening == Opening::kImmutable ? ImmutableName(file) : PlainName(file);
}

int FlagsFor(Opening opening) noexcept {
    if (opening == Opening::kImmutable) return SQLITE_OPEN_READONLY | SQLITE_OPEN_URI;
    return SQLITE_OPEN_READWRITE | (opening == Opening::kExisting ? 0 : SQLITE_OPEN_CREATE);
}

}  // namespace

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const noexcept {
    sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(sqlite3* database, const char* sql) {
    sqlite3_stmt* statement = nullptr;
    m_result = sqlite3_prepare_v2(database, sql, -1, &statement, nullptr);
    m_statement.reset(statement);
}

SqliteStatement& SqliteStatement::Bound(int result) {
    if (m_result == SQLITE_OK) m_result = result;
    return *this;
}

SqliteStatement& SqliteStatement::Bind(std::string_view text) {
    if (!m_statement) return *this;
    // A null address would bind NULL.
    const char* data = text.empty() ? "" : text.data();
    return Bound(sqlite3_bind_text64(m_statement.get(), ++m_bound, data, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

SqliteStatement& SqliteStatement::Bind(std::int64_t value) {
    return m_statement ? Bound(sqlite3_bind_int64(m_statement.get(), ++m_bound, value)) : *this;
}

SqliteStatement& SqliteStatement::BindBytes(std::string_view bytes) {
    if (!m_statement) return *this;
    const char* data = bytes.empty() ? "" : bytes.data();
    return Bound(sqlite3_bind_blob64(m_statement.get(), ++m_bound, data, bytes.size(), SQLITE_TRANSIENT));
}

SqliteStatement& SqliteStatement::BindKept(std::string_view text) {
    if (!m_statement) return *this;
    const char* data = text.empty() ? "" : text.data();
    return Bound(sqlite3_bind_text64(m_statement.get(), ++m_bound, data, text.size(), SQLITE_STATIC, SQLITE_UTF8));
}

SqliteStatement& SqliteStatement::BindKeptBytes(std::string_view bytes) {
    if (!m_statement) return *this;
    const char* data = bytes.empty() ? "" : bytes.data();
    return Bound(sqlite3_bind_blob64(m_statement.get(), ++m_bound, data, bytes.size(), SQLITE_STATIC));
}

SqliteStatement& SqliteStatement::BindNull() {
    return m_statement ? Bound(sqlite3_bind_null(m_statement.get(), ++m_bound)) : *this;
}

bool SqliteStatement::Next() {
    if (!m_statement || (m_result != SQLITE_OK && m_result != SQLITE_ROW)) return false;
    m_result = sqlite3_step(m_statement.get());
    return m_result == SQLITE_ROW;
}

bool SqliteStatement::Run() {
    while (Next()) {
    }
    return m_result == SQLITE_DONE;
}

SqliteStatement& SqliteStatement::Again() {
    if (m_statement && !Failed()) m_result = sqlite3_reset(m_statement.get());
    m_bound = 0;
    return *this;
}

bool SqliteStatement::Failed() const noexcept {
    return m_result != SQLITE_OK && m_result != SQLITE_ROW && m_result != SQLITE_DONE;
}

bool SqliteStatement::IsNull(int column) const {
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

std::int64_t SqliteStatement::Int(int column) const {
    return sqlite3_column_int64(m_statement.get(), column);
}

double SqliteStatement::Real(int column) const {
    return sqlite3_column_double(m_statement.get(), column);
}

std::string SqliteStatement::Text(int column) const {
    const unsigned char* data = sqlite3_column_text(m_statement.get(), column);
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    return data == nullptr ? std::string()
                           : std::string(reinterpret_cast<const char*>(data), static_cast<std::size_t>(size));
}

std::string SqliteStatement::Bytes(int column) const {
    const void* data = sqlite3_column_blob(m_statement.get(), column);
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    return data == nullptr ? std::string()
                           : std::string(static_cast<const char*>(data), static_cast<std::size_t>(size));
}

void SqliteDatabase::Close::operator()(sqlite3* database) const noexcept {
    sqlite3_close_v2(database);
}

SqliteDatabase::SqliteDatabase(const std::filesystem::path& file, Opening opening, std::chrono::milliseconds patience) {
    sqlite3* handle = nullptr;
    const int result = sqlite3_open_v2(NameFor(file, opening).c_str(), &handle, FlagsFor(opening), nullptr);
    m_handle.reset(handle);
    if (result != SQLITE_OK) return;  // the handle has the reason
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_busy_timeout(handle, static_cast<int>(patience.count()));
}

SqliteStatement& SqliteDatabase::Cached(const char* sql) {
    m_failure = 0;
    const auto found = m_cached.find(sql);
    if (found != m_cached.end() && !found->second.Failed()) return found->second.Again();
    return m_cached.insert_or_assign(sql, Prepare(sql)).first->second;
}

void SqliteDatabase::RollBack() noexcept {
    const int failure = ErrorCode();
    try {
        m_failure_text = Error();
    } catch (const std::bad_alloc&) {
        m_failure_text.clear();
    }
    // A full disk, for one, has ended the transaction; then ROLLBACK would be a failure of its own.
    if (m_handle && sqlite3_get_autocommit(m_handle.get()) == 0) Run("ROLLBACK");
    m_failure = failure;
}

int SqliteDatabase::ErrorCode() const {
    if (m_failure != SQLITE_OK) return m_failure;
    return m_handle ? sqlite3_errcode(m_handle.get()) : SQLITE_NOMEM;
}

std::string SqliteDatabase::Error() const {
    if (m_failure != SQLITE_OK && !m_failure_text.empty()) return m_failure_text;
    return m_handle ? sqlite3_errmsg(m_handle.get()) : "out of memory";
}

int SqliteDatabase::Changes() const {
    return sqlite3_changes(m_handle.get());
}

std::string SqliteDatabase::Bytes() const {
    sqlite3_int64 size = 0;
    unsigned char* const bytes = sqlite3_serialize(m_handle.get(), "main", &size, 0);
    if (bytes == nullptr) return {};
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> owner(bytes, &sqlite3_free);
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

std::int64_t SqliteDatabase::LastRow() const {
    return sqlite3_last_insert_rowid(m_handle.get());
}

const char* SqliteVersion() noexcept {
    return sqlite3_libversion();
}

}  // namespace zel::base
