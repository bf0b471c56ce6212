#include "platform/seam/settings_store.h"

#include <utility>

namespace zel::seam {

namespace {

SettingsStore* g_current = nullptr;
SettingsStore* (*g_make_default)() = nullptr;

}  // namespace

SettingsStore::~SettingsStore() = default;

SettingsStore* SetSettingsStore(SettingsStore* store) {
    return std::exchange(g_current, store);
}

SettingsStore& GetSettingsStore() {
    if (g_current != nullptr) return *g_current;
    static auto& store = *g_make_default();  // outlives every module
    return store;
}

bool SetDefaultSettingsStore(SettingsStore* (*make)()) noexcept {
    g_make_default = make;
    return true;
}

}  // namespace zel::seam
