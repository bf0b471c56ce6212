#pragma once

#include <string>

#include "platform/seam/settings_store.h"

namespace zel::cli {

/// All settings in a store, by section: "  NAME = VALUE", with a remark if the module ignores the value. Passwords are
/// not shown. Texts are safe on a terminal.
std::string SettingsText(seam::SettingsStore& store);

/// The text of an entry in a recent list: its bytes up to the first NUL.
std::string RecentText(const seam::RegistryValue& value);

}  // namespace zel::cli
