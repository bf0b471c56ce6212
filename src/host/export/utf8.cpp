#include "host/export/utf8.h"

namespace zel::exporter {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

struct Decoded {
    char32_t code;
    /// In bytes.
    std::size_t size;
};

/// Bytes of the sequence that begins with this byte; 0 when none begins with it.
constexpr std::size_t SequenceSize(unsigned char first) noexcept {
    if (first < 0x80) return 1;
    if (first < 0xC2) return 0;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

constexpr bool IsText(char32_t code, std::size_t size) noexcept {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < 0x20 || (code >= 0x7F && code < 0xA0)) return false;
    return code >= kSmallest[size] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

/// @param text  not empty.
Decoded DecodeFirst(std::string_view text) noexcept {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t size = SequenceSize(first);
    if (size == 0 || size > text.size()) return {kReplacement, 1};
    char32_t code = size == 1 ? first : first & (0x7FU >> size);
    for (std::size_t n = 1; n < size; ++n) {
        const auto next = static_cast<unsigned char>(text[n]);
        if ((next & 0xC0) != 0x80) return {kReplacement, 1};
        code = code << 6 | (next & 0x3F);
    }
    return {IsText(code, size) ? code : kReplacement, size};
}

}  // namespace

std::vector<char32_t> CodePoints(std::string_view text) {
    std::vector<char32_t> codes;
    while (!text.empty()) {
        const Decoded decoded = DecodeFirst(text);
        codes.push_back(decoded.code);
        text.remove_prefix(decoded.size);
    }
    return codes;
}

std::string Utf8(std::span<const char32_t> codes) {
    std::string text;
    const auto follow = [&](char32_t bits) { text += static_cast<char>(0x80 | (bits & 0x3F)); };
    for (const char32_t code : codes) {
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
    return text;
}

std::string ValidUtf8(std::string_view text) {
    return Utf8(CodePoints(text));
}

}  // namespace zel::exporter
