#include "programs/cli/settings_command.h"

#include <charconv>
#include <memory>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include "base/terminal_text.h"
#include "platform/system/registry.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/json_output.h"
#include "programs/cli/known_settings.h"
#include "programs/cli/options.h"
#include "programs/cli/run_options.h"
#include "programs/cli/settings_listing.h"
#include "programs/cli/settings_scope.h"

namespace zel::cli {

namespace {

struct SettingsArguments {
    std::optional<std::string> directory;
    std::string section, key, value;
    bool json = false;
};

/// The arguments name no setting, or a value that the module would not take.
class InvalidSetting : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::optional<int> Number(const std::string& text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && !text.empty() ? std::optional(number) : std::nullopt;
}

/// The setting that the user names: an entry of a known section or of a recent list.
class NamedSetting {
  public:
    NamedSetting(const std::string& section, const std::string& key)
        : m_known(FindKnownSetting(section, key)), m_list(FindRecentList(section)) {
        if (m_known != nullptr) return;
        const std::optional<int> index = m_list != nullptr ? Number(key) : std::nullopt;
        if (!index || *index < 0 || *index >= kRecentEntries)
            throw InvalidSetting("unknown setting " + base::TerminalText(section + " " + key) +
                                 ". Settings:" + KnownNames());
        m_index = *index;
    }

    std::string Name() const {
        return m_known != nullptr ? std::string(m_known->section) + " " + m_known->entry
                                  : std::string(m_list->name) + " " + std::to_string(m_index);
    }

    /// @throws CommandError for a password, or when nothing is stored.
    StoredSetting Get(seam::SettingsStore& store) const {
        if (m_known == nullptr) {
            const auto value = store.GetValue(m_list->Key(), m_list->ValueName(m_index));
            if (!value) throw NotStored();
            return {m_list->name, std::to_string(m_index), SettingKind::kText, RecentText(*value)};
        }
        if (m_known->kind == SettingKind::kScrambled) throw CommandError(Name() + ": passwords are not shown");
        if (m_known->kind == SettingKind::kNumber) {
            const auto number = store.GetProfileInt(m_known->section, m_known->entry);
            if (!number) throw NotStored();
            return {m_known->section, m_known->entry, m_known->kind, std::to_string(*number)};
        }
        const auto text = store.GetProfileText(m_known->section, m_known->entry);
        if (!text) throw NotStored();
        return {m_known->section, m_known->entry, m_known->kind, *text};
    }

    /// @return false if it could not be stored.
    /// @throws InvalidSetting for a value that the module would not take.
    bool Set(seam::SettingsStore& store, const std::string& value) const {
        if (m_known == nullptr) return SetRecent(store, value);
        if (m_known->kind == SettingKind::kScrambled)
            throw InvalidSetting(Name() + ": passwords cannot be set here; use the FTP dialog");
        if (m_known->kind == SettingKind::kText) return store.SetProfileText(m_known->section, m_known->entry, value);
        const std::optional<int> number = Number(value);
        if (!number)
            throw InvalidSetting(Name() + ": \"" + base::TerminalText(value) + "\" is not an integer of 32 bits");
        return store.SetProfileInt(m_known->section, m_known->entry, *number);
    }

    /// @throws CommandError when nothing is stored.
    void Unset(seam::SettingsStore& store) const {
        if (!(m_known != nullptr ? store.DeleteProfileEntry(m_known->section, m_known->entry)
                                 : store.DeleteValue(m_list->Key(), m_list->ValueName(m_index))))
            throw NotStored();
    }

  private:
    CommandError NotStored() const { return CommandError(Name() + ": not stored"); }

    bool SetRecent(seam::SettingsStore& store, const std::string& text) const {
        if (text.size() > stored::kMaxRecentText) {
            throw InvalidSetting(Name() + ": " + std::to_string(text.size()) +
                                 " characters; the module reads at most " + std::to_string(stored::kMaxRecentText));
        }
        seam::RegistryValue value{REG_SZ, {text.begin(), text.end()}};
        value.bytes.push_back(0);
        return store.CreateKey(m_list->Key()) && store.SetValue(m_list->Key(), m_list->ValueName(m_index), value);
    }

    const KnownSetting* m_known;
    const RecentList* m_list;
    int m_index = 0;
};

using Action = void (*)(seam::SettingsStore&, const SettingsArguments&);

void List(seam::SettingsStore& store, const SettingsArguments& arguments) {
    const std::vector<StoredSetting> settings = StoredSettings(store);
    if (arguments.json) {
        for (const StoredSetting& setting : settings) PrintJson(SettingJson(setting));
        return;
    }
    const std::string text = SettingsText(settings);
    PrintLines(text.empty() ? "No settings are stored.\n" : text);
}
void Get(seam::SettingsStore& store, const SettingsArguments& arguments) {
    const StoredSetting setting = NamedSetting(arguments.section, arguments.key).Get(store);
    if (arguments.json) {
        PrintJson(SettingJson(setting));
    } else {
        PrintLine(setting.value);
    }
}
void Set(seam::SettingsStore& store, const SettingsArguments& arguments) {
    const NamedSetting setting(arguments.section, arguments.key);
    if (!setting.Set(store, arguments.value)) throw CommandError(setting.Name() + ": cannot be stored");
}
void Unset(seam::SettingsStore& store, const SettingsArguments& arguments) {
    NamedSetting(arguments.section, arguments.key).Unset(store);
}

ExitCode RunSettings(Action action, const SettingsArguments& arguments) {
    SettingsScope settings(arguments.directory);
    if (!settings.IsUsable()) throw CommandError(settings.Note());
    settings.PrintAnyNote();
    const std::string note = settings.Note();
    try {
        action(seam::GetSettingsStore(), arguments);
    } catch (const InvalidSetting& error) {
        PrintErrorLines(error.what());
        return ExitCode::kWrongArguments;
    } catch (const CommandError&) {
        // A setting that could not be read isn't one that is not stored.
        if (settings.Note() == note) throw;
    }
    if (settings.Note() != note) throw CommandError(settings.Note());
    return ExitCode::kDone;
}

/// Adds a subcommand for one setting.
CLI::App& AddAction(CLI::App& settings, const std::string& name, const std::string& description,
                    const std::shared_ptr<SettingsArguments>& arguments, CommandRun& run, Action action) {
    CLI::App& command = *settings.add_subcommand(name, description);
    AddArgument(command, "SECTION", arguments->section,
                "a section, such as ZELFTPSaveOptions, or a recent list, such as FontDir");
    AddArgument(command, "KEY", arguments->key,
                "an entry of the section, such as Username, or an index of the list, where 0 is the newest");
    AddSettings(command, arguments->directory);
    command.callback([arguments, action, &run] { run = [=] { return RunSettings(action, *arguments); }; });
    return command;
}

}  // namespace

void AddSettingsCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<SettingsArguments>();
    CLI::App& settings = *app.add_subcommand("settings", "Lists the stored settings; prints, changes or removes one.");
    AddSettings(settings, arguments->directory);
    settings.require_subcommand(0, 1);
    AddJson(settings, arguments->json, "print one JSON object per setting, each in one line");
    CLI::App& get = AddAction(settings, "get", "Prints one setting.", arguments, run, &Get);
    AddJson(get, arguments->json, "print the setting as a JSON object");
    CLI::App& set = AddAction(settings, "set", "Stores one setting.", arguments, run, &Set);
    AddArgument(set, "VALUE", arguments->value, "an integer or a text, as the entry requires");
    AddAction(settings, "unset", "Removes one setting, which restores the module's default.", arguments, run, &Unset);
    AddExample(settings, "zeltrans settings set ZELFNTSaveOptions SkipWarnings 1");
    settings.callback([arguments, &settings, &run] {
        if (settings.get_subcommands().empty()) run = [arguments] { return RunSettings(&List, *arguments); };
    });
}

}  // namespace zel::cli
