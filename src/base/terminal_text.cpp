#include "base/terminal_text.h"

#include <algorithm>
#include <cstdio>

#include "base/utf8.h"

namespace zel::base {

namespace {

struct CodeRange {
    char32_t first, last;
};

/// Characters that are invisible or act on others, apart from control characters.
constexpr CodeRange kUnprintable[] = {
    {0x00AD, 0x00AD},    // soft hyphen
    {0x061C, 0x061C},    // Arabic letter mark
    {0x180E, 0x180E},    // Mongolian vowel separator
    {0x200B, 0x200B},    // zero width; the joiners after it belong to the spelling of words
    {0x200E, 0x200F},    // marks of direction
    {0x2028, 0x202E},    // line and paragraph separators, embedded and overridden direction
    {0x2060, 0x206F},    // invisible operators, isolated direction
    {0xFEFF, 0xFEFF},    // byte order mark
    {0xFFF9, 0xFFFB},    // interlinear annotation
    {0xE0000, 0xE0FFF},  // tags
};

bool IsPrintable(char32_t code) noexcept {
    return !IsControl(code) && std::ranges::none_of(kUnprintable, [code](const CodeRange& range) {
        return code >= range.first && code <= range.last;
    });
}

void AppendCode(std::string& text, const char* format, char32_t code) {
    char digits[16];
    std::snprintf(digits, sizeof digits, format, static_cast<unsigned>(code));
    text += digits;
}

void AppendFirst(std::string& shown, std::string_view text, const Utf8Character& first) {
    if (!first.valid) {
        AppendCode(shown, "\\x%02X", static_cast<unsigned char>(text.front()));
    } else if (IsPrintable(first.code)) {
        shown += text.substr(0, first.size);
    } else {
        AppendCode(shown, first.code < 0x80 ? "\\x%02X" : first.code < 0x10000 ? "\\u%04X" : "\\U%08X", first.code);
    }
}

std::string Shown(std::string_view text, bool keep_lines) {
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const Utf8Character first = FirstCharacter(text);
        if (keep_lines && first.code == '\n') {
            shown += '\n';
        } else {
            AppendFirst(shown, text, first);
        }
        text.remove_prefix(first.valid ? first.size : 1);
    }
    return shown;
}

}  // namespace

std::string TerminalText(std::string_view text) {
    return Shown(text, false);
}

std::string TerminalLines(std::string_view text) {
    return Shown(text, true);
}

}  // namespace zel::base
