#pragma once

#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "platform/seam/settings_store.h"
#include "programs/cli/known_settings.h"

namespace zel::cli {

/// A stored setting.
struct StoredSetting {
    /// A section, or the name of a recent list.
    std::string section;
    /// An entry of the section, or the index in the list.
    std::string entry;
    SettingKind kind = SettingKind::kText;
    /// In digits for a number.
    std::string value;
    /// What is wrong with the entry, such as why the module ignores it; empty for none.
    std::string remark{};
};

/// All settings in a store: by section, then the recent lists.
std::vector<StoredSetting> StoredSettings(seam::SettingsStore& store);

/// Settings by section: "  NAME = VALUE", with a remark if the module ignores the value. Passwords are not shown. Texts
/// are safe on a terminal.
std::string SettingsText(const std::vector<StoredSetting>& settings);

/// A setting as --json prints it; described in docs/json.md. Passwords are not shown.
nlohmann::ordered_json SettingJson(const StoredSetting& setting);

/// The text of an entry in a recent list: its bytes up to the first NUL.
std::string RecentText(const seam::RegistryValue& value);

}  // namespace zel::cli
