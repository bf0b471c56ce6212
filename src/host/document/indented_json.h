#pragma once

#include <string>
#include <string_view>

namespace zel::document {

/// A JSON document as a text to read: a line for each member and element, two blanks deeper in each bracket. Any other
/// text comes out as some text.
/// @param json  without blanks and line feeds outside its strings.
std::string IndentedJson(std::string_view json);

}  // namespace zel::document
