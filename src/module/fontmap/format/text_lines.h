#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

namespace zel::fontmap {

/// The lines of a name list, taken as the legacy importer took them: through a buffer of 200 bytes, so that a longer
/// line comes as several.
class TextLines {
  public:
    /// Characters that one line has at most, its newline included.
    static constexpr std::size_t kMaxLine = 199;

    /// @param text  must outlive the lines.
    explicit TextLines(std::string_view text) noexcept : m_rest(text) { FindNul(); }

    /// The next line without its newline, good as long as the text; nothing at the end. A NUL ends the line's text.
    std::optional<std::string_view> Next() noexcept;

    /// Passes over the two headings that every list begins with.
    void SkipHeadings() noexcept {
        Next();
        Next();
    }

  private:
    void FindNul() noexcept { m_nul = m_rest.data() + std::min(m_rest.find('\0'), m_rest.size()); }

    std::string_view m_rest;
    const char* m_nul = nullptr;  // the first one of the rest, or its end
};

}  // namespace zel::fontmap
