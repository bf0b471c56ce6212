#pragma once

#include <string>

namespace zel::document {

/// A document in readable form: one line for each member and element, indented by two blanks per level.
/// A text that ParseDocument rejects is returned unchanged.
std::string IndentedJson(const std::string& document);

}  // namespace zel::document
