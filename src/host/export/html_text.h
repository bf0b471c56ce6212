#pragma once

#include <string>
#include <string_view>

#include "base/base64.h"

namespace zel::exporter {

/// Any text, escaped for use between tags and in a quoted attribute; valid UTF-8.
std::string HtmlText(std::string_view text);

using base::Base64;

/// The beginning of a page up to and including <body>. The page's policy allows pictures embedded in the page and this
/// style, by its checksum, and forbids scripts, forms and everything that is loaded.
/// @param title  any text.
std::string HtmlHead(std::string_view title, std::string_view style);

/// What else a page may load and run.
struct HtmlPolicy {
    /// Where pictures are from, as a policy has it.
    std::string_view images = "data:";
    /// The text of the page's script element; empty for none.
    std::string_view script{};
};
/// The beginning of a page with that policy.
std::string HtmlHead(std::string_view title, std::string_view style, const HtmlPolicy& policy);

}  // namespace zel::exporter
