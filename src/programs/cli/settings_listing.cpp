#include "programs/cli/settings_listing.h"

#include <algorithm>
#include <utility>

#include <nlohmann/json.hpp>

#include "base/terminal_text.h"
#include "host/document/json_version.h"
#include "inspect/words.h"
#include "platform/system/types.h"
#include "programs/cli/json_output.h"

namespace zel::cli {

namespace {

StoredSetting ProfileSetting(const seam::ProfileEntry& stored) {
    const KnownSetting* const known = FindKnownSetting(stored.section, stored.entry);
    const auto* const number = std::get_if<int>(&stored.value);
    StoredSetting setting{stored.section, stored.entry, number != nullptr ? SettingKind::kNumber : SettingKind::kText,
                          number != nullptr ? std::to_string(*number) : std::get<std::string>(stored.value)};
    if (known == nullptr) {
        setting.remark = "unknown to the module";
    } else if ((known->kind == SettingKind::kNumber) != (number != nullptr)) {
        setting.remark = known->kind == SettingKind::kNumber ? "ignored: not a number" : "ignored: not a text";
    }
    // A password stays hidden, whatever is wrong with it.
    if (known != nullptr && known->kind == SettingKind::kScrambled && number == nullptr) setting.kind = known->kind;
    return setting;
}

/// Why the module ignores an entry; empty if it reads it.
std::string ListRemark(int index, const seam::RegistryValue& value) {
    const std::size_t buffer_size = stored::kMaxRecentText + 1;
    const bool terminated = std::ranges::find(value.bytes, BYTE{0}) != value.bytes.end();
    if (value.bytes.size() > buffer_size || (value.bytes.size() == buffer_size && !terminated)) {
        return "ignored: " + inspect::Count(RecentText(value).size(), "character") + "; the module reads at most " +
               std::to_string(stored::kMaxRecentText);
    }
    return index < kRecentEntries ? "" : "ignored: only 0 to " + std::to_string(kRecentEntries - 1) + " are read";
}

void AddList(seam::SettingsStore& store, const RecentList& list, std::vector<StoredSetting>& settings) {
    std::vector<std::pair<int, std::string>> names;
    for (const std::string& name : store.ValueNames(list.Key())) {
        if (const auto index = list.Index(name)) names.emplace_back(*index, name);
    }
    std::ranges::sort(names);
    for (const auto& [index, name] : names) {
        const seam::RegistryValue value = store.GetValue(list.Key(), name).value_or(seam::RegistryValue());
        settings.push_back(
            {list.name, std::to_string(index), SettingKind::kText, RecentText(value), ListRemark(index, value)});
    }
}

std::string ShownValue(const StoredSetting& setting) {
    if (setting.kind != SettingKind::kScrambled) return base::TerminalText(setting.value);
    return setting.value.empty() ? "" : "(stored)";
}

}  // namespace

std::string RecentText(const seam::RegistryValue& value) {
    return {value.bytes.begin(), std::ranges::find(value.bytes, BYTE{0})};
}

std::vector<StoredSetting> StoredSettings(seam::SettingsStore& store) {
    std::vector<StoredSetting> settings;
    for (const seam::ProfileEntry& stored : store.ProfileEntries()) settings.push_back(ProfileSetting(stored));
    for (const RecentList& list : RecentLists()) AddList(store, list, settings);
    return settings;
}

std::string SettingsText(const std::vector<StoredSetting>& settings) {
    std::string text;
    const std::string* section = nullptr;
    for (const StoredSetting& setting : settings) {
        if (section == nullptr || *section != setting.section)
            text += (text.empty() ? "" : "\n") + base::TerminalText(setting.section) + "\n";
        section = &setting.section;
        text += "  " + base::TerminalText(setting.entry) + " = " + ShownValue(setting) +
                (setting.remark.empty() ? "" : "  (" + setting.remark + ")") + "\n";
    }
    return text;
}

nlohmann::ordered_json SettingJson(const StoredSetting& setting) {
    nlohmann::ordered_json json = {{"version", document::kJsonVersion},
                                   {"section", setting.section},
                                   {"entry", setting.entry},
                                   {"kind", "text"},
                                   {"value", setting.value},
                                   {"remark", TextOrNull(setting.remark)}};
    if (setting.kind == SettingKind::kNumber) {
        json["kind"] = "number";
        json["value"] = std::stoi(setting.value);
    } else if (setting.kind == SettingKind::kScrambled) {
        json["kind"] = "password";
        json["value"] = nullptr;
    }
    return json;
}

}  // namespace zel::cli
