#include "host/export/utf8.h"

#include "base/utf8.h"

namespace zel::exporter {

std::vector<char32_t> CodePoints(std::string_view text) {
    constexpr char32_t kReplacement = 0xFFFD;
    std::vector<char32_t> codes;
    while (!text.empty()) {
        const base::Utf8Character first = base::FirstCharacter(text);
        codes.push_back(base::IsControl(first.code) ? kReplacement : first.code);
        text.remove_prefix(first.size);
    }
    return codes;
}

std::string Utf8(std::span<const char32_t> codes) {
    std::string text;
    for (const char32_t code : codes) base::AppendUtf8(text, code);
    return text;
}

std::string ValidUtf8(std::string_view text) {
    return Utf8(CodePoints(text));
}

}  // namespace zel::exporter
