#pragma once

#include <string>

namespace zel::document {

/// A document in readable form: one line for each member and element, indented by two blanks per level.
/// A text that ParseDocument rejects is returned unchanged. Strings and numbers are copied as they are.
std::string IndentedJson(const std::string& document);

}  // namespace zel::document
