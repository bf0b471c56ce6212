#include "module/fontmap/format/text_lines.h"

#include <algorithm>
#include <cstring>

#include "base/field_text.h"

namespace zel::fontmap {

void ConvertToText(std::string& bytes) {
    bytes.resize(std::min(bytes.find(kEndOfText), bytes.size()));
    char* const end = bytes.data() + bytes.size();
    char* out = static_cast<char*>(std::memchr(bytes.data(), '\r', bytes.size()));
    if (out == nullptr) return;
    for (const char* in = out; in != end; ++in) {
        if (*in != '\r' || in + 1 == end || in[1] != '\n') *out++ = *in;
    }
    bytes.resize(static_cast<std::size_t>(out - bytes.data()));
}

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
