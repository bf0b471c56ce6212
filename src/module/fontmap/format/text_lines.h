#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zel::fontmap {

/// Most bytes of a name list that are read. A list of 10,000 lines has less than a MiB.
inline constexpr std::size_t kMaxListSize = std::size_t{4} << 20;

/// The byte that ends a text.
inline constexpr char kEndOfText = 26;

/// Converts the bytes of a file to text as the module's home system does: CR LF becomes LF, and kEndOfText ends it.
void ConvertToText(std::string& bytes);

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
