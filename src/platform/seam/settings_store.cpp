#include "platform/seam/settings_store.h"

#include "platform/seam/current_seam.h"

namespace zel::seam {

namespace {

// Initialised before any code runs, since the default is set while the platform is loaded.
constinit CurrentSeam<SettingsStore> g_store;

}  // namespace

SettingsStore::~SettingsStore() = default;

SettingsStore* SetSettingsStore(SettingsStore* store) {
    return g_store.Set(store);
}

SettingsStore& GetSettingsStore() {
    return g_store.Get();
}

bool SetDefaultSettingsStore(SettingsStore* (*make)()) noexcept {
    g_store.SetDefault(make);
    return true;
}

}  // namespace zel::seam
