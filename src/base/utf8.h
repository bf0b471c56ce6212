#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zel::base {

/// The first character of a UTF-8 text.
struct Utf8Character {
    /// U+FFFD for an invalid character.
    char32_t code;
    /// In bytes; 1 where no character begins or it is incomplete.
    std::size_t size;
    /// Whether the sequence is complete, no longer than necessary, and the code point exists.
    bool valid;
};

/// @param text  not empty.
Utf8Character FirstCharacter(std::string_view text) noexcept;

/// Whether a code point is a control character.
constexpr bool IsControl(char32_t code) noexcept {
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

void AppendUtf8(std::string& text, char32_t code);

/// Latin-1, in which each byte is the code point of the same value, as UTF-8.
std::string Utf8FromLatin1(std::string_view bytes);

}  // namespace zel::base
