#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zel::cli {

/// The settings that the module reads. Names are compared ignoring the case of ASCII letters.

enum class SettingKind { kNumber, kText, kPassword };

struct KnownSetting {
    const char* section;
    const char* entry;
    SettingKind kind;
};

/// The setting of these names; null for none.
const KnownSetting* FindKnownSetting(const std::string& section, const std::string& entry);

/// A recent list: a registry key whose values are named after the list and the index of the entry; 0 is the newest.
struct RecentList {
    const char* name;

    std::string Key() const;
    std::string ValueName(int index) const { return std::string(name) + " " + std::to_string(index); }
    /// The index in the name of a value; nothing if the value does not belong to the list.
    std::optional<int> Index(const std::string& value_name) const;
};
/// The module reads the entries from 0 to 9.
inline constexpr int kRecentEntries = 10;
/// In characters; the module reads an entry into a buffer of 260 with the NUL.
inline constexpr std::size_t kLongestRecentText = 259;

const std::vector<RecentList>& RecentLists();
const RecentList* FindRecentList(const std::string& name);

/// Every section with its entries, one section per line.
std::string KnownNames();

}  // namespace zel::cli
