#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel::exporter {

/// The code points of a text. A control character, and a byte that isn't part of a well-formed character, becomes
/// U+FFFD.
std::vector<char32_t> CodePoints(std::string_view text);

/// @param codes  as CodePoints returns them.
std::string Utf8(std::span<const char32_t> codes);

/// The text with the replacements of CodePoints.
std::string ValidUtf8(std::string_view text);

}  // namespace zel::exporter
