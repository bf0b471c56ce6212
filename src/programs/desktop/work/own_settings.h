#pragma once

#include "platform/script/memory_settings_store.h"

namespace zel::desktop {

/// While it lives, the module keeps its settings here and not among the user's: an import without its dialog turns
/// Skip Warnings on for good, which is the user's to choose.
class OwnSettings {
  public:
    OwnSettings() : m_before(seam::SetSettingsStore(&m_store)) {}
    ~OwnSettings() { seam::SetSettingsStore(m_before); }
    OwnSettings(const OwnSettings&) = delete;
    OwnSettings& operator=(const OwnSettings&) = delete;

  private:
    script::MemorySettingsStore m_store;
    seam::SettingsStore* m_before;
};

}  // namespace zel::desktop
