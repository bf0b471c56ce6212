#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/library/recording.h"

namespace zel::exporter {

/// What the index of a site has of a message.
struct SiteEntry {
    library::RecordingKey key;
    /// UTF-8, as all texts.
    std::string title, text;
    std::vector<std::string> fonts, fields;
    /// Path of the message's own file.
    std::string source;
    bool has_picture = false;
};

/// The entry of a message.
SiteEntry SiteEntryOf(const library::Recording& recording);

/// index.html: the page with the entries, which is searched and drawn by a script in it. The page loads nothing but
/// thumbnails, and allows no other script.
std::string SiteIndex(const std::vector<SiteEntry>& entries);

/// Reads the entries of a page that SiteIndex has made; empty for any other text.
std::optional<std::vector<SiteEntry>> ReadSiteIndex(std::string_view page);

}  // namespace zel::exporter
