#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/seam/settings_store.h"

namespace zel::cli {

/// Gives the recent lists of the module back the entries that they had when this object was made. For a run with
/// directories that won't exist later.
class KeptRecentLists {
  public:
    KeptRecentLists();
    ~KeptRecentLists();
    KeptRecentLists(const KeptRecentLists&) = delete;
    KeptRecentLists& operator=(const KeptRecentLists&) = delete;

  private:
    struct List {
        std::string key;
        std::vector<std::pair<std::string, seam::RegistryValue>> values;
    };
    std::vector<List> m_lists;
};

}  // namespace zel::cli
