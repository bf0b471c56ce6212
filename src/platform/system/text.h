#pragma once

#include <string>

namespace zel::system {

/// A text of the system's interfaces, in which null stands for the empty one.
inline std::string OrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace zel::system
