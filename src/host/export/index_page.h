#pragma once

#include <string>
#include <vector>

namespace zel::exporter {

/// A message that has a page.
struct IndexEntry {
    /// Name of the page without its extension.
    std::string stem;
    /// UTF-8.
    std::string title;
};

/// A page with a link to the page of each message.
std::string IndexPage(const std::vector<IndexEntry>& messages);

}  // namespace zel::exporter
