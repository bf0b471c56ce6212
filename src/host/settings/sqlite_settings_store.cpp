#include "host/settings/sqlite_settings_store.h"

#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "host/settings/settings_database.h"
#include "platform/system/types.h"

namespace zel::settings {

namespace {

constexpr char kFileName[] = "settings.sqlite";

/// Locks a directory against other processes that replace a damaged file. The work continues if locking fails.
class DirectoryLock {
  public:
    explicit DirectoryLock(const std::filesystem::path& directory)
        : m_descriptor(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (m_descriptor.IsOpen()) flock(m_descriptor.Get(), LOCK_EX);
    }

  private:
    base::FileDescriptor m_descriptor;
};

/// An unused name beside the file.
std::filesystem::path FreeName(const std::filesystem::path& file) {
    for (int number = 1;; ++number) {
        std::filesystem::path name = file.string() + ".damaged-" + std::to_string(number);
        std::error_code error;
        if (!std::filesystem::exists(std::filesystem::symlink_status(name, error))) return name;
    }
}

/// Creates the directory if it is missing. A new one, and the user's own one, are closed to other users.
std::error_code MakeDirectory(const std::filesystem::path& directory) {
    std::error_code error;
    const std::filesystem::path plain = directory.has_filename() ? directory : directory.parent_path();
    if (plain.has_parent_path()) std::filesystem::create_directories(plain.parent_path(), error);
    if (error) return error;
    if (::mkdir(plain.c_str(), S_IRWXU) != 0 && directory == SqliteSettingsStore::UserDirectory())
        ::chmod(plain.c_str(), S_IRWXU);
    std::filesystem::create_directories(directory, error);  // reports what is in its place
    return error;
}

std::string ParentKey(const std::string& key) {
    const std::size_t cut = key.rfind('\\');
    return cut == std::string::npos ? std::string() : key.substr(0, cut);
}

bool InsertKey(SettingsDatabase& database, const std::string& key) {
    return database.Prepare("INSERT OR IGNORE INTO registry_key (path, parent) VALUES (?, ?)")
        .Bind(key)
        .Bind(ParentKey(key))
        .Run();
}

bool HasKey(SettingsDatabase& database, const std::string& key) {
    if (key.empty()) return true;
    base::SqliteStatement& found = database.Cached("SELECT 1 FROM registry_key WHERE path = ?");
    const base::SqliteReset reset(found);
    return found.Bind(key).Next();
}

}  // namespace

SqliteSettingsStore::SqliteSettingsStore(std::filesystem::path directory) : m_directory(std::move(directory)) {}

SqliteSettingsStore::~SqliteSettingsStore() {
    if (m_log_has_removed) EraseRemoved();
}

void SqliteSettingsStore::EraseRemoved() {
    m_log_has_removed = !m_database->EmptyLog();
}

std::filesystem::path SqliteSettingsStore::UserDirectory() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    if (config != nullptr && config[0] == '/') return std::filesystem::path(config) / "zeltrans";
    const char* home = std::getenv("HOME");
    if (home == nullptr || home[0] != '/') return {};
    return std::filesystem::path(home) / ".config" / "zeltrans";
}

SettingsDatabase* SqliteSettingsStore::Open() {
    if (std::exchange(m_tried, true)) return m_database.get();
    const std::filesystem::path file = m_directory / kFileName;
    if (m_directory.empty()) {
        m_note = "settings can't be stored: neither XDG_CONFIG_HOME nor HOME is an absolute path";
        return nullptr;
    }
    if (const std::error_code error = MakeDirectory(m_directory)) {
        m_note = file.string() + ": settings can't be stored: " + error.message();
        return nullptr;
    }
    auto database = std::make_unique<SettingsDatabase>(file);
    if (database->GetState() == SettingsDatabase::State::kDamaged) database = ReplaceDamaged(file);
    if (database->GetState() == SettingsDatabase::State::kReady) {
        m_database = std::move(database);
    } else {
        m_note = file.string() + ": settings can't be stored: " + database->Failure();
    }
    return m_database.get();
}

std::unique_ptr<SettingsDatabase> SqliteSettingsStore::ReplaceDamaged(const std::filesystem::path& file) {
    const DirectoryLock lock(m_directory);
    auto database = std::make_unique<SettingsDatabase>(file);  // another process may have replaced it meanwhile
    if (database->GetState() != SettingsDatabase::State::kDamaged) return database;
    database.reset();
    const std::filesystem::path aside = FreeName(file);
    std::error_code error;
    std::filesystem::rename(file, aside, error);
    std::filesystem::rename(file.string() + "-wal", aside.string() + "-wal", error);  // the log of the last writes
    std::filesystem::remove(file.string() + "-shm", error);
    m_note = file.string() + ": the stored settings were damaged; they are kept as " + aside.filename().string() +
             ", and empty settings replace them";
    return std::make_unique<SettingsDatabase>(file);
}

bool SqliteSettingsStore::NoteUnlessStored(bool stored, const SettingsDatabase* database) {
    if (!stored && database != nullptr) {
        m_note = (m_directory / kFileName).string() + ": a setting could not be stored: " + database->Error();
    }
    return stored;
}

void SqliteSettingsStore::NoteUnlessRead(const base::SqliteStatement& statement, const SettingsDatabase& database) {
    if (statement.Failed())
        m_note = (m_directory / kFileName).string() + ": settings could not be read: " + database.Error();
}

bool SqliteSettingsStore::IsRemoved(base::SqliteStatement& removal, SettingsDatabase& database) {
    if (!NoteUnlessStored(removal.Run(), &database) || database.Changes() != 1) return false;
    EraseRemoved();
    return true;
}

std::optional<int> SqliteSettingsStore::GetProfileInt(const std::string& section, const std::string& entry) {
    SettingsDatabase* database = Open();
    if (database == nullptr) return std::nullopt;
    auto& found = database->Cached("SELECT number FROM profile WHERE section = ? AND entry = ? AND number IS NOT NULL");
    const base::SqliteReset reset(found);
    const bool is_stored = found.Bind(section).Bind(entry).Next();
    NoteUnlessRead(found, *database);
    if (!is_stored) return std::nullopt;
    return static_cast<int>(found.Int(0));
}

std::optional<std::string> SqliteSettingsStore::GetProfileText(const std::string& section, const std::string& entry) {
    SettingsDatabase* database = Open();
    if (database == nullptr) return std::nullopt;
    auto& found = database->Cached("SELECT text FROM profile WHERE section = ? AND entry = ? AND text IS NOT NULL");
    const base::SqliteReset reset(found);
    const bool is_stored = found.Bind(section).Bind(entry).Next();
    NoteUnlessRead(found, *database);
    if (!is_stored) return std::nullopt;
    return found.Bytes(0);
}

bool SqliteSettingsStore::SetProfileInt(const std::string& section, const std::string& entry, int value) {
    if (GetProfileInt(section, entry) == value) return true;  // a write waits for the disk
    SettingsDatabase* database = Open();
    if (database == nullptr) return false;
    auto write = database->Prepare("REPLACE INTO profile (section, entry, number) VALUES (?, ?, ?)");
    return NoteUnlessStored(write.Bind(section).Bind(entry).Bind(std::int64_t{value}).Run(), database);
}

bool SqliteSettingsStore::SetProfileText(const std::string& section, const std::string& entry,
                                         const std::string& text) {
    const std::optional<std::string> replaced = GetProfileText(section, entry);
    if (replaced == text) return true;
    SettingsDatabase* database = Open();
    if (database == nullptr) return false;
    auto write = database->Prepare("REPLACE INTO profile (section, entry, text) VALUES (?, ?, ?)");
    if (!NoteUnlessStored(write.Bind(section).Bind(entry).BindBytes(text).Run(), database)) return false;
    if (replaced && !replaced->empty()) EraseRemoved();
    return true;
}

std::vector<seam::ProfileEntry> SqliteSettingsStore::ProfileEntries() {
    std::vector<seam::ProfileEntry> entries;
    SettingsDatabase* database = Open();
    if (database == nullptr) return entries;
    auto found = database->Prepare("SELECT section, entry, text, number FROM profile ORDER BY section, entry");
    while (found.Next()) {
        seam::ProfileEntry& entry =
            entries.emplace_back(seam::ProfileEntry{found.Bytes(0), found.Bytes(1), found.Bytes(2)});
        if (!found.IsNull(3)) entry.value = static_cast<int>(found.Int(3));
    }
    NoteUnlessRead(found, *database);
    return entries;
}

bool SqliteSettingsStore::DeleteProfileEntry(const std::string& section, const std::string& entry) {
    SettingsDatabase* database = Open();
    if (database == nullptr) return false;
    auto gone = database->Prepare("DELETE FROM profile WHERE section = ? AND entry = ?");
    return IsRemoved(gone.Bind(section).Bind(entry), *database);
}

bool SqliteSettingsStore::KeyExists(const std::string& key) {
    SettingsDatabase* database = Open();
    return database != nullptr && HasKey(*database, key);
}

bool SqliteSettingsStore::KeyHasSubKeys(const std::string& key) {
    SettingsDatabase* database = Open();
    return database != nullptr &&
           database->Prepare("SELECT 1 FROM registry_key WHERE parent = ? AND path <> '' LIMIT 1").Bind(key).Next();
}

bool SqliteSettingsStore::CreateKey(const std::string& key) {
    SettingsDatabase* database = Open();
    if (database == nullptr) return false;
    if (HasKey(*database, key)) return true;
    base::SqliteTransaction transaction(*database);
    bool made = transaction.IsOpen();
    for (std::size_t end = key.find('\\'); made && end != std::string::npos; end = key.find('\\', end + 1)) {
        made = InsertKey(*database, key.substr(0, end));
    }
    return NoteUnlessStored(made && InsertKey(*database, key) && transaction.Commit(), database);
}

bool SqliteSettingsStore::DeleteKey(const std::string& key) {
    SettingsDatabase* database = Open();
    if (database == nullptr) return false;
    base::SqliteTransaction transaction(*database);
    const bool gone = transaction.IsOpen() &&
                      database->Prepare("DELETE FROM registry_value WHERE path = ?").Bind(key).Run() &&
                      database->Prepare("DELETE FROM registry_key WHERE path = ?").Bind(key).Run();
    if (gone && database->Changes() == 0) return false;
    if (!NoteUnlessStored(gone && transaction.Commit(), database)) return false;
    EraseRemoved();
    return true;
}

std::optional<seam::RegistryValue> SqliteSettingsStore::GetValue(const std::string& key, const std::string& name) {
    SettingsDatabase* database = Open();
    if (database == nullptr) return std::nullopt;
    auto& found = database->Cached("SELECT type, bytes FROM registry_value WHERE path = ? AND name = ?");
    const base::SqliteReset reset(found);
    const bool is_stored = found.Bind(key).Bind(name).Next();
    NoteUnlessRead(found, *database);
    if (!is_stored) return std::nullopt;
    const std::string bytes = found.Bytes(1);
    return seam::RegistryValue{static_cast<DWORD>(found.Int(0)), {bytes.begin(), bytes.end()}};
}

bool SqliteSettingsStore::SetValue(const std::string& key, const std::string& name, const seam::RegistryValue& value) {
    if (GetValue(key, name) == value) return true;
    SettingsDatabase* database = Open();
    if (database == nullptr) return false;
    base::SqliteTransaction transaction(*database);  // the key must not be deleted between the check and the write
    if (!transaction.IsOpen()) return NoteUnlessStored(false, database);
    if (!HasKey(*database, key)) return false;
    auto write = database->Prepare("REPLACE INTO registry_value (path, name, type, bytes) VALUES (?, ?, ?, ?)");
    const auto* bytes = reinterpret_cast<const char*>(value.bytes.data());
    const bool written =
        write.Bind(key).Bind(name).Bind(std::int64_t{value.type}).BindBytes({bytes, value.bytes.size()}).Run();
    return NoteUnlessStored(written && transaction.Commit(), database);
}

std::vector<std::string> SqliteSettingsStore::ValueNames(const std::string& key) {
    std::vector<std::string> names;
    SettingsDatabase* database = Open();
    if (database == nullptr) return names;
    auto found = database->Prepare("SELECT name FROM registry_value WHERE path = ? ORDER BY name");
    found.Bind(key);
    while (found.Next()) names.push_back(found.Bytes(0));
    NoteUnlessRead(found, *database);
    return names;
}

bool SqliteSettingsStore::DeleteValue(const std::string& key, const std::string& name) {
    SettingsDatabase* database = Open();
    if (database == nullptr) return false;
    auto gone = database->Prepare("DELETE FROM registry_value WHERE path = ? AND name = ?");
    return IsRemoved(gone.Bind(key).Bind(name), *database);
}

}  // namespace zel::settings
