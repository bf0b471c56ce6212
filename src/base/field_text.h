#pragma once

#include <cstddef>
#include <string_view>

namespace zel::base {

/// A text up to its first NUL, or all of it.
constexpr std::string_view UpToNul(std::string_view text) noexcept {
    return text.substr(0, text.find('\0'));
}

/// The text of a fixed field, up to its first NUL or to the field's end.
template <std::size_t Size>
constexpr std::string_view FieldText(const char (&field)[Size]) noexcept {
    return UpToNul({field, Size});
}

}  // namespace zel::base
