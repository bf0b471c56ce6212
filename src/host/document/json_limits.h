#pragma once

#include <string_view>

namespace zel::document {

/// Checks a JSON text before it is parsed: its size, the number of its values, the depth of its objects and arrays, and
/// the number of members of one object, which the parser searches for each further member. The limits are far above any
/// message's document. A library can come from elsewhere.
/// @return the first excess, to follow "the recorded document"; null within the limits. A text that isn't JSON gives
///         either.
const char* JsonExcess(std::string_view text) noexcept;

}  // namespace zel::document
