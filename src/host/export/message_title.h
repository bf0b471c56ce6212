#pragma once

#include <string>

namespace zel::exporter {

/// A title for a message, from the searchable text of its recording: the first line with more than one character, since
/// a single one is usually a piece of artwork; otherwise the first line that isn't empty. At most 100 characters of
/// valid UTF-8; empty without text.
std::string TitleOf(const std::string& text);

}  // namespace zel::exporter
