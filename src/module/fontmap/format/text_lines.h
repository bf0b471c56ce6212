#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

namespace zel::fontmap {

/// Splits a name list into lines. A line longer than kMaxLine is split, as by the 200-byte buffer of the legacy
/// importer.
class TextLines {
  public:
    /// Maximum number of characters of a line, including its newline.
    static constexpr std::size_t kMaxLine = 199;

    /// @param text  must outlive the lines.
    explicit TextLines(std::string_view text) noexcept : m_rest(text) { FindNul(); }

    /// The next line, without its newline and cut at a NUL; nothing at the end of the text.
    std::optional<std::string_view> Next() noexcept;

    /// Skips the two headings of a list.
    void SkipHeadings() noexcept {
        Next();
        Next();
    }

  private:
    void FindNul() noexcept { m_nul = m_rest.data() + std::min(m_rest.find('\0'), m_rest.size()); }

    std::string_view m_rest;
    // The first NUL of the rest, or its end.
    const char* m_nul = nullptr;
};

}  // namespace zel::fontmap
