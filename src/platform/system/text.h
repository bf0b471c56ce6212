#pragma once

#include <string>

namespace zel::system {

/// A text that a caller has passed, in which null means the empty text.
inline std::string OrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace zel::system
