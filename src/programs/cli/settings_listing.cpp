#include "programs/cli/settings_listing.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/terminal_text.h"
#include "inspect/words.h"
#include "platform/system/types.h"
#include "programs/cli/known_settings.h"

namespace zel::cli {

namespace {

std::string Line(const std::string& name, const std::string& value, const std::string& remark) {
    return "  " + base::TerminalText(name) + " = " + value + (remark.empty() ? "" : "  (" + remark + ")") + "\n";
}

std::string EntryLine(const seam::ProfileEntry& stored) {
    const KnownSetting* const known = FindKnownSetting(stored.section, stored.entry);
    const auto* const number = std::get_if<int>(&stored.value);
    std::string remark;
    if (known == nullptr) {
        remark = "unknown to the module";
    } else if ((known->kind == SettingKind::kNumber) != (number != nullptr)) {
        remark = known->kind == SettingKind::kNumber ? "ignored: not a number" : "ignored: not a text";
    }
    std::string value;
    if (number != nullptr) {
        value = std::to_string(*number);
    } else if (const std::string& text = std::get<std::string>(stored.value);
               known != nullptr && known->kind == SettingKind::kScrambled) {
        value = text.empty() ? "" : "(stored)";
    } else {
        value = base::TerminalText(text);
    }
    return Line(stored.entry, value, remark);
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

std::string ListText(seam::SettingsStore& store, const RecentList& list) {
    std::vector<std::pair<int, std::string>> names;
    for (const std::string& name : store.ValueNames(list.Key())) {
        if (const auto index = list.Index(name)) names.emplace_back(*index, name);
    }
    std::ranges::sort(names);
    std::string text;
    for (const auto& [index, name] : names) {
        const seam::RegistryValue value = store.GetValue(list.Key(), name).value_or(seam::RegistryValue());
        text += Line(std::to_string(index), base::TerminalText(RecentText(value)), ListRemark(index, value));
    }
    return text;
}

}  // namespace

std::string RecentText(const seam::RegistryValue& value) {
    return {value.bytes.begin(), std::ranges::find(value.bytes, BYTE{0})};
}

std::string SettingsText(seam::SettingsStore& store) {
    std::string text, section;
    const auto begin = [&](const std::string& name) {
        text += (text.empty() ? "" : "\n") + base::TerminalText(name) + "\n";
        section = name;
    };
    for (const seam::ProfileEntry& stored : store.ProfileEntries()) {
        if (text.empty() || stored.section != section) begin(stored.section);
        text += EntryLine(stored);
    }
    for (const RecentList& list : RecentLists()) {
        const std::string lines = ListText(store, list);
        if (lines.empty()) continue;
        begin(list.name);
        text += lines;
    }
    return text;
}

}  // namespace zel::cli
