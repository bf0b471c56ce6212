#include "inspect/words.h"

#include <algorithm>
#include <cstdio>

#include "base/text.h"

namespace zel::inspect {

std::string PrintableCode(int code) {
    if (code >= ' ' && code <= '~' && code != '\\') return {static_cast<char>(code)};
    char text[16];
    std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned>(code));
    return text;
}

std::string Printable(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) text += PrintableCode(static_cast<unsigned char>(byte));
    return text;
}

std::string CodeName(int code) {
    std::string name = std::to_string(code);
    if (code > ' ' && code <= '~') name.append(" '").append(1, static_cast<char>(code)).append("'");
    return name;
}

std::string Number(std::uint64_t number) {
    return base::GroupedDigits(number);
}

std::string Count(std::uint64_t count, std::string_view one, std::string_view plural) {
    return Number(count) + " " + base::Noun(count, one, plural);
}

std::string Hex(std::uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%04X", static_cast<unsigned>(value));
    return text;
}

std::string Listed(const std::vector<std::string>& items, std::size_t most) {
    std::string text;
    const std::size_t named = std::min(items.size(), most);
    for (std::size_t i = 0; i < named; ++i) {
        if (i != 0) text += ", ";
        text += items[i];
    }
    if (named < items.size()) text += " and " + Number(items.size() - named) + " more";
    return text;
}

}  // namespace zel::inspect
