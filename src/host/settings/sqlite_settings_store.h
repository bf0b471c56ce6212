#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/seam/settings_store.h"

namespace zel::base {
class SqliteStatement;
}

namespace zel::settings {

class SettingsDatabase;

/// Settings in one SQLite file, settings.sqlite with its log beside it, in a directory that is created if it is
/// missing, and closed to other users. What is removed or replaced is gone from the file and the log, too, unless
/// another program is reading them at that moment. Each write is on the disk, and visible to other processes, when the
/// call returns; a crash leaves the values from before or after it. The first call opens the file. A damaged file is
/// renamed and a new one is created.
class SqliteSettingsStore : public seam::SettingsStore {
  public:
    explicit SqliteSettingsStore(std::filesystem::path directory);
    ~SqliteSettingsStore() override;

    /// The user's directory: zeltrans below $XDG_CONFIG_HOME, or below .config of the home directory. Empty if neither
    /// is an absolute path; a store in an empty path stores nothing.
    static std::filesystem::path UserDirectory();

    /// Whether the file can be read and written. Opens it.
    bool IsUsable() { return Open() != nullptr; }

    /// What the user should know: a damaged file was renamed, or why settings can't be stored or read. Otherwise empty.
    const std::string& Note() const noexcept { return m_note; }

    std::optional<int> GetProfileInt(const std::string& section, const std::string& entry) override;
    std::optional<std::string> GetProfileText(const std::string& section, const std::string& entry) override;
    bool SetProfileInt(const std::string& section, const std::string& entry, int value) override;
    bool SetProfileText(const std::string& section, const std::string& entry, const std::string& text) override;
    std::vector<seam::ProfileEntry> ProfileEntries() override;
    bool DeleteProfileEntry(const std::string& section, const std::string& entry) override;

    bool KeyExists(const std::string& key) override;
    bool KeyHasSubKeys(const std::string& key) override;
    bool CreateKey(const std::string& key) override;
    bool DeleteKey(const std::string& key) override;
    std::optional<seam::RegistryValue> GetValue(const std::string& key, const std::string& name) override;
    bool SetValue(const std::string& key, const std::string& name, const seam::RegistryValue& value) override;
    std::vector<std::string> ValueNames(const std::string& key) override;
    bool DeleteValue(const std::string& key, const std::string& name) override;

  private:
    SettingsDatabase* Open();
    std::unique_ptr<SettingsDatabase> ReplaceDamaged(const std::filesystem::path& file);
    bool NoteUnlessStored(bool stored, const SettingsDatabase* database);
    void NoteUnlessRead(const base::SqliteStatement& statement, const SettingsDatabase& database);
    /// Runs a statement that removes one value. @return false if there was none.
    bool IsRemoved(base::SqliteStatement& removal, SettingsDatabase& database);
    void EraseRemoved();

    std::filesystem::path m_directory;
    std::unique_ptr<SettingsDatabase> m_database;
    bool m_tried = false;
    /// The log may still contain what was removed.
    bool m_log_has_removed = false;
    std::string m_note;
};

}  // namespace zel::settings
