#pragma once

#include "platform/script/memory_settings_store.h"

namespace zel::desktop {

/// During its lifetime the module's settings are in memory instead of the user's store: an import without the module's
/// dialog turns Skip Warnings on permanently, which only the user may do.
class TemporarySettings {
  public:
    TemporarySettings() : m_previous(seam::SetSettingsStore(&m_store)) {}
    ~TemporarySettings() { seam::SetSettingsStore(m_previous); }
    TemporarySettings(const TemporarySettings&) = delete;
    TemporarySettings& operator=(const TemporarySettings&) = delete;

  private:
    script::MemorySettingsStore m_store;
    seam::SettingsStore* m_previous;
};

}  // namespace zel::desktop
