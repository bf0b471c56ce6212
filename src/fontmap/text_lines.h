#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The lines of a name list, taken as the legacy importer took them: through a buffer of 200 bytes, so that a longer
/// line comes as several.
class TextLines {
  public:
    /// Characters that one line has at most, its newline included.
    static constexpr std::size_t kMaxLine = 199;

    /// @param text  must outlive the lines.
    explicit TextLines(std::string_view text) noexcept : m_rest(text) {}

    /// The next line without its newline, good as long as the text; nothing at the end. A NUL ends the line's text.
    std::optional<std::string_view> Next() noexcept;

    /// Passes over the two headings that every list begins with.
    void SkipHeadings() noexcept {
        Next();
        Next();
    }

  private:
    std::string_view m_rest;
};

/// A name list's text by its file name in the registered directory, CR LF turned into LF; nothing when it can't be
/// opened.
/// @param path  receives the path that was tried.
std::optional<std::string> ReadNameList(const char* file_name, std::string& path);
