#pragma once

#include <string>

namespace zel::document {

/// A document in readable form: one line for each member and element, indented by two blanks per level.
/// @param json  as MessageDocument wrote it. A text that is not JSON is returned unchanged.
std::string IndentedJson(const std::string& json);

}  // namespace zel::document
