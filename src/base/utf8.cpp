#include "base/utf8.h"

namespace zel::base {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// Bytes of the sequence that begins with this byte; 0 when none does.
constexpr std::size_t SequenceSize(unsigned char first) noexcept {
    if (first < 0x80) return 1;
    if (first < 0xC2) return 0;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

/// Whether a code point exists and needs a sequence of this size.
constexpr bool IsCodePoint(char32_t code, std::size_t size) noexcept {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return code >= kSmallest[size] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

}  // namespace

Utf8Character FirstCharacter(std::string_view text) noexcept {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t size = SequenceSize(first);
    if (size == 0 || size > text.size()) return {kReplacement, 1, false};
    char32_t code = size == 1 ? first : first & (0x7FU >> size);
    for (std::size_t n = 1; n < size; ++n) {
        const auto next = static_cast<unsigned char>(text[n]);
        if ((next & 0xC0) != 0x80) return {kReplacement, 1, false};
        code = code << 6 | (next & 0x3F);
    }
    const bool valid = IsCodePoint(code, size);
    return {valid ? code : kReplacement, size, valid};
}

void AppendUtf8(std::string& text, char32_t code) {
    const auto follow = [&](char32_t bits) { text += static_cast<char>(0x80 | (bits & 0x3F)); };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | code >> 6);
        follow(code);
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0 | code >> 12);
        follow(code >> 6);
        follow(code);
    } else {
        text += static_cast<char>(0xF0 | code >> 18);
        follow(code >> 12);
        follow(code >> 6);
        follow(code);
    }
}

std::string Utf8FromLatin1(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) AppendUtf8(text, static_cast<unsigned char>(c));
    return text;
}

}  // namespace zel::base
