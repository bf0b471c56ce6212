#include "fontmap/text_lines.h"

#include <algorithm>

std::optional<std::string_view> TextLines::Next() noexcept {
    if (m_rest.empty()) return std::nullopt;
    const std::size_t newline = m_rest.find('\n');
    const std::size_t taken =
        std::min({newline == std::string_view::npos ? m_rest.size() : newline + 1, kMaxLine, m_rest.size()});
    std::string_view line = m_rest.substr(0, taken);
    m_rest.remove_prefix(taken);
    if (line.back() == '\n') line.remove_suffix(1);
    return line.substr(0, line.find('\0'));
}
