#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zel::cli {

/// What the module stores, by the names under which it looks for it. Names are compared without regard to the case of
/// ASCII letters.

enum class SettingKind { kNumber, kText, kPassword };

struct KnownSetting {
    const char* section;
    const char* entry;
    SettingKind kind;
};

/// The entry that the module reads under these names, null for none.
const KnownSetting* FindKnownSetting(const std::string& section, const std::string& entry);

/// A recent list: a key of the registry whose values are named by the list and the entry's index, 0 the newest.
struct RecentList {
    const char* name;

    std::string Key() const;
    std::string ValueName(int index) const { return std::string(name) + " " + std::to_string(index); }
    /// Index in the name of a value; nothing when it is none of the list's.
    std::optional<int> Index(const std::string& value_name) const;
};
inline constexpr int kRecentEntries = 10;               // that the module reads, from index 0 on
inline constexpr std::size_t kLongestRecentText = 259;  // characters; the module has no room for more

const std::vector<RecentList>& RecentLists();
const RecentList* FindRecentList(const std::string& name);

/// Every section with its entries, a line each, for the user to choose from.
std::string KnownNames();

}  // namespace zel::cli
