#pragma once

namespace zel::document {

/// The key `version` of everything that is written as JSON, apart from the trace. It rises when a key is removed or
/// changes its meaning; programs should ignore keys that they don't know.
inline constexpr int kJsonVersion = 1;

}  // namespace zel::document
