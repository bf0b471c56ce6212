#pragma once

#include <optional>
#include <string>
#include <vector>

#include "module/contract/stored_settings.h"

namespace zel::cli {

// The settings of the module by name. Names are compared ignoring the case of ASCII letters.

using stored::kRecentEntries;
using stored::SettingKind;
using KnownSetting = stored::Setting;

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

const std::vector<RecentList>& RecentLists();
const RecentList* FindRecentList(const std::string& name);

/// Every section with its entries, one section per line.
std::string KnownNames();

}  // namespace zel::cli
