#pragma once

#include <string>

#include "platform/seam/settings_store.h"

namespace zel::cli {

/// All that a store holds for the module, section by section: "  NAME = VALUE", with a remark where the module won't
/// take the value. A password isn't shown. Control characters stand as \xNN.
std::string SettingsText(seam::SettingsStore& store);

/// Text of a recent list's entry: its bytes up to the first NUL.
std::string RecentText(const seam::RegistryValue& value);

}  // namespace zel::cli
