#include "base/csv_text.h"

namespace zel::base {

void AppendCsvValue(std::string& line, std::string_view text) {
    const bool has_blank = text.starts_with(' ') || text.ends_with(' ');
    if (!has_blank && text.find_first_of(",\"\r\n") == std::string_view::npos) {
        line += text;
        return;
    }
    line += '"';
    for (const char c : text) {
        if (c == '"') line += '"';
        line += c;
    }
    line += '"';
}

std::string WithFormulaGuard(std::string_view text) {
    constexpr std::string_view kGuarded = "=+-@\t\r'";
    const bool is_guarded = !text.empty() && kGuarded.find(text.front()) != std::string_view::npos;
    return (is_guarded ? "'" : "") + std::string(text);
}

std::string_view WithoutFormulaGuard(std::string_view text) noexcept {
    return text.starts_with('\'') ? text.substr(1) : text;
}

}  // namespace zel::base
