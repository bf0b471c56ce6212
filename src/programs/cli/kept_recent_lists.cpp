#include "programs/cli/kept_recent_lists.h"

#include <exception>

#include "programs/cli/known_settings.h"

namespace zel::cli {

KeptRecentLists::KeptRecentLists() {
    seam::SettingsStore& store = seam::GetSettingsStore();
    for (const RecentList& recent : RecentLists()) {
        List& list = m_lists.emplace_back(List{recent.Key(), {}});
        for (const std::string& name : store.ValueNames(list.key)) {
            if (auto value = store.GetValue(list.key, name)) list.values.emplace_back(name, std::move(*value));
        }
    }
}

KeptRecentLists::~KeptRecentLists() {
    try {
        seam::SettingsStore& store = seam::GetSettingsStore();
        for (const List& list : m_lists) {
            for (const std::string& name : store.ValueNames(list.key)) store.DeleteValue(list.key, name);
            for (const auto& [name, value] : list.values) store.SetValue(list.key, name, value);
        }
    } catch (const std::exception&) {
        // The module skips a stored directory that doesn't exist.
    }
}

}  // namespace zel::cli
