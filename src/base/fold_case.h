#pragma once

#include <algorithm>
#include <string_view>

namespace zel::base {

/// Comparison without regard to the case of ASCII letters, for file, registry and list names. Private to the platform.

constexpr unsigned char FoldCase(char c) noexcept {
    return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
}

inline bool EqualsFolded(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return FoldCase(x) == FoldCase(y); });
}

inline bool LessFolded(std::string_view a, std::string_view b) noexcept {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return FoldCase(x) < FoldCase(y); });
}

}  // namespace zel::base
