#include "module/fontmap/format/text_lines.h"

#include <algorithm>
#include <cstring>

#include "base/field_text.h"

namespace zel::fontmap {

std::optional<std::string_view> TextLines::Next() noexcept {
    if (m_rest.empty()) return std::nullopt;
    const std::size_t most = std::min(kMaxLine, m_rest.size());
    const auto* const newline = static_cast<const char*>(std::memchr(m_rest.data(), '\n', most));
    std::size_t length = newline != nullptr ? static_cast<std::size_t>(newline - m_rest.data()) : most;
    std::string_view line = m_rest.substr(0, length);
    m_rest.remove_prefix(newline != nullptr ? length + 1 : length);
    if (m_nul >= m_rest.data()) return line;
    line = base::UpToNul(line);
    FindNul();
    return line;
}

}  // namespace zel::fontmap
