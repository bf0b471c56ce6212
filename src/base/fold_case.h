#pragma once

#include <algorithm>
#include <string_view>

namespace zel::base {

/// An ASCII letter in lower case; any other character unchanged.
constexpr unsigned char FoldCase(char c) noexcept {
    return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
}

constexpr bool IsAsciiLetter(char c) noexcept {
    return FoldCase(c) >= 'a' && FoldCase(c) <= 'z';
}

/// Whether two texts differ at most in the case of ASCII letters.
inline bool EqualsFolded(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return FoldCase(x) == FoldCase(y); });
}

/// The order of bytes, without regard to the case of ASCII letters.
inline bool LessFolded(std::string_view a, std::string_view b) noexcept {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return FoldCase(x) < FoldCase(y); });
}

}  // namespace zel::base
