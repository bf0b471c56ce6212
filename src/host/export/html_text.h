#pragma once

#include <string>
#include <string_view>

namespace zel::exporter {

/// A text that may stand between tags and in a quoted attribute, whatever it holds; valid UTF-8.
std::string HtmlText(std::string_view text);

/// Bytes in base 64.
std::string Base64(std::string_view bytes);

/// The beginning of a page up to its <body>: it may load nothing, run nothing and send nothing anywhere; pictures come
/// from inside the page and the one style is known by its checksum.
/// @param title  any text.
std::string HtmlHead(std::string_view title, std::string_view style);

}  // namespace zel::exporter
