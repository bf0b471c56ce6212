#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/seam/settings_store.h"

namespace zel::settings {

class SettingsDatabase;

/// Settings in one SQLite file, settings.sqlite with its log beside it, of a directory that is made if it is missing.
/// Each write is on the disk when the call returns; a second process sees it, and a crash leaves the values of before
/// or after. The file is opened by the first call. A file that is damaged is set aside under another name, and a fresh
/// one begun.
class SqliteSettingsStore : public seam::SettingsStore {
  public:
    explicit SqliteSettingsStore(std::filesystem::path directory);
    ~SqliteSettingsStore() override;

    /// The user's directory: zeltrans below $XDG_CONFIG_HOME, or below .config of the home directory.
    static std::filesystem::path UserDirectory();

    /// Whether there is a file to read and write, which is opened.
    bool IsUsable() { return Open() != nullptr; }

    /// What a person should know: a damaged file that was set aside, or why nothing can be stored; empty when all is
    /// well.
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
    std::unique_ptr<SettingsDatabase> BeginAfresh(const std::filesystem::path& file);
    bool Stored(bool stored, const SettingsDatabase* database);

    std::filesystem::path m_directory;
    std::unique_ptr<SettingsDatabase> m_database;
    bool m_tried = false;
    std::string m_note;
};

}  // namespace zel::settings
