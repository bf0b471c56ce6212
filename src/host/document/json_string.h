#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace zel::document {

/// Position of the quotation mark that ends a JSON string; the size of the text without one.
/// @param position  of the string's first character.
inline std::size_t EndOfJsonString(std::string_view text, std::size_t position) noexcept {
    while (position < text.size() && text[position] != '"') position += text[position] == '\\' ? 2 : 1;
    return std::min(position, text.size());
}

}  // namespace zel::document
