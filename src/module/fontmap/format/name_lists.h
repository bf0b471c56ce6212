#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zel::fontmap {

// The lines of the two name lists.
//
// bitstream_fontlist.txt, after two headings:         typeface_list.txt, after two headings:
//   FAMILY [ =...] [TAB ...]           heading          TYPEFACE TAB... BITSTREAM NAME
//   TAB STYLE [ =...] TAB ... NUMBER   indented entry
//   NAME [ =...] TAB ... NUMBER        plain entry

/// One typeface of the Bitstream list.
struct BitstreamEntry {
    std::uint16_t number = 0;
    bool indented = false;
    /// Of an indented entry.
    std::string_view family;
    /// The style of an indented entry, else the name.
    std::string_view name;

    /// The first word of the complete name, which is "FAMILY STYLE BT" for an indented entry, else "NAME BT".
    std::string_view FirstWord() const noexcept {
        const std::string_view first = indented ? family : name;
        return first.substr(0, first.find(' '));
    }
};

/// Reads the lines of the Bitstream list, in order. Keeps the family of the last heading.
class BitstreamLineReader {
  public:
    /// @param line   without its newline; the text must outlive the reader and the entry.
    /// @param entry  receives the entry.
    /// @return false for a line without an entry: a heading, or an indented line without a second TAB.
    bool Read(std::string_view line, BitstreamEntry& entry) noexcept;

  private:
    std::string_view m_family;
};

/// One line of the typeface list.
struct TypefaceEntry {
    /// May be empty.
    std::string_view typeface;
    /// The rest of the line, including blanks and TABs.
    std::string_view bitstream_name;
};

/// Reads a line of the typeface list.
/// @param line  without its newline; the text must outlive the result.
/// @return nothing for a line without a TAB or with nothing after its TABs.
std::optional<TypefaceEntry> ReadTypefaceLine(std::string_view line) noexcept;

}  // namespace zel::fontmap
