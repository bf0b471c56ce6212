#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zel::cli {

/// Characters of a UTF-8 text, each of which takes one column of a terminal.
std::size_t Characters(std::string_view text);

/// The text with blanks behind it, or before it when it stands at the right, up to a width in characters.
std::string Padded(std::string_view text, std::size_t width, bool right = false);

}  // namespace zel::cli
