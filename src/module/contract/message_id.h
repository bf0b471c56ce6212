#pragma once

#include <climits>
#include <cstddef>
#include <string_view>

namespace zel {

// Message ids as a user types them: digits, with or without a leading dot.

/// Four digits.
inline constexpr int kLargestMessageNumber = 9999;

inline std::string_view WithoutLeadingDot(std::string_view id) noexcept {
    return id.starts_with('.') ? id.substr(1) : id;
}

/// Number of leading digits.
inline std::size_t CountDigits(std::string_view text) noexcept {
    const std::size_t end = text.find_first_not_of("0123456789");
    return end == std::string_view::npos ? text.size() : end;
}

/// Value of the leading digits, 0 without any; INT_MAX for a larger value.
inline int MessageNumberOf(std::string_view text) noexcept {
    long long value = 0;
    for (const char c : text.substr(0, CountDigits(text))) {
        value = value * 10 + (c - '0');
        if (value > INT_MAX) return INT_MAX;
    }
    return static_cast<int>(value);
}

}  // namespace zel
