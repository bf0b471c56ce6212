#include "platform/seam/settings_store.h"

#include <utility>

namespace zel::seam {

namespace {

SettingsStore* g_current_store = nullptr;
SettingsStore* (*g_make_store)() = nullptr;

}  // namespace

SettingsStore::~SettingsStore() = default;

SettingsStore* SetSettingsStore(SettingsStore* store) {
    return std::exchange(g_current_store, store);
}

SettingsStore& GetSettingsStore() {
    if (g_current_store != nullptr) return *g_current_store;
    static auto& store = *g_make_store();  // outlives every module
    return store;
}

bool SetDefaultSettingsStore(SettingsStore* (*make)()) noexcept {
    g_make_store = make;
    return true;
}

}  // namespace zel::seam
