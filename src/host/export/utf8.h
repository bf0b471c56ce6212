#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel::exporter {

/// The code points of a text; a byte that is no part of a well-formed one, and a control character, is U+FFFD.
std::vector<char32_t> CodePoints(std::string_view text);

/// @param codes  as CodePoints gives them.
std::string Utf8(std::span<const char32_t> codes);

/// The text as it stands, but for what CodePoints replaces.
std::string ValidUtf8(std::string_view text);

}  // namespace zel::exporter
