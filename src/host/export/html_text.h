#pragma once

#include <string>
#include <string_view>

namespace zel::exporter {

/// Any text, escaped for use between tags and in a quoted attribute; valid UTF-8.
std::string HtmlText(std::string_view text);

/// Bytes in base64, with padding.
std::string Base64(std::string_view bytes);

/// The beginning of a page up to its <body>. The page's policy forbids loading, scripts and forms; it allows pictures
/// inside the page and this one style, by its checksum.
/// @param title  any text.
std::string HtmlHead(std::string_view title, std::string_view style);

}  // namespace zel::exporter
