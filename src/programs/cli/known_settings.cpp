#include "programs/cli/known_settings.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

#include "base/fold_case.h"

namespace zel::cli {

const KnownSetting* FindKnownSetting(const std::string& section, const std::string& entry) {
    const auto* const found = std::ranges::find_if(stored::kSettings, [&](const KnownSetting& known) {
        return base::EqualsFolded(known.section, section) && base::EqualsFolded(known.entry, entry);
    });
    return found != std::end(stored::kSettings) ? found : nullptr;
}

std::string RecentList::Key() const {
    return std::string(stored::kRecentListsKey) + "\\" + name;
}

std::optional<int> RecentList::Index(const std::string& value_name) const {
    const std::string_view digits =
        std::string_view(value_name).substr(std::min(value_name.rfind(' ') + 1, value_name.size()));
    int index = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), index);
    return index >= 0 && base::EqualsFolded(value_name, ValueName(index)) ? std::optional(index) : std::nullopt;
}

const std::vector<RecentList>& RecentLists() {
    static const std::vector<RecentList> lists = [] {
        std::vector<RecentList> all;
        for (const char* name : stored::kRecentLists) all.push_back({name});
        return all;
    }();
    return lists;
}

const RecentList* FindRecentList(const std::string& name) {
    const auto found = std::ranges::find_if(
        RecentLists(), [&](const RecentList& list) { return base::EqualsFolded(list.name, name); });
    return found != RecentLists().end() ? &*found : nullptr;
}

std::string KnownNames() {
    std::string text;
    std::string_view section;
    for (const KnownSetting& known : stored::kSettings) {
        text += section == known.section ? ", " : std::string("\n  ") + known.section + ": ";
        section = known.section;
        text += std::string_view(known.entry).find(' ') == std::string_view::npos
                    ? known.entry
                    : "'" + std::string(known.entry) + "'";
    }
    for (const RecentList& list : RecentLists())
        text += std::string("\n  ") + list.name + ": 0 to " + std::to_string(kRecentEntries - 1);
    return text;
}

}  // namespace zel::cli
