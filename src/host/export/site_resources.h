#pragma once

#include <string_view>

namespace zel::exporter {

// The files of site/, which the build puts into the program.

/// JavaScript of the index.
std::string_view SiteScript() noexcept;
/// CSS of the index, and of the page of a message.
std::string_view SiteIndexStyle() noexcept;
std::string_view SitePageStyle() noexcept;

}  // namespace zel::exporter
