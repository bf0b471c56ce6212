#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zel::fontmap {

// The two name lists, line by line; pure functions over text.
//
// bitstream_fontlist.txt, behind two headings:        typeface_list.txt, behind two headings:
//   FAMILY [ =...] [TAB ...]           heading          TYPEFACE TAB... BITSTREAM NAME
//   TAB STYLE [ =...] TAB ... NUMBER   indented entry
//   NAME [ =...] TAB ... NUMBER        plain entry

/// One typeface of the Bitstream list.
struct BitstreamEntry {
    std::uint16_t number = 0;
    bool indented = false;
    std::string_view family;  ///< of an indented entry.
    std::string_view name;    ///< the style of an indented entry, else the name.

    /// What stands before the first blank of the built name: "%s %s BT" of an indented entry, else "%s BT".
    std::string_view FirstWord() const noexcept {
        const std::string_view first = indented ? family : name;
        return first.substr(0, first.find(' '));
    }
};

/// Reads the lines of the Bitstream list in order, keeping the family that headings set.
class BitstreamLineReader {
  public:
    /// @param line   without its newline; its characters must outlive the reader and the entry.
    /// @param entry  receives what the line adds.
    /// @return false for a heading and for an indented line without a second TAB, which add nothing.
    bool Read(std::string_view line, BitstreamEntry& entry) noexcept;

  private:
    std::string_view m_family;
};

/// One line of the typeface list.
struct TypefaceEntry {
    std::string_view typeface;        ///< may be empty.
    std::string_view bitstream_name;  ///< to the end of the line, blanks and TABs included.
};

/// @param line  without its newline.
/// @return nothing for a line without a TAB, or with nothing behind its TABs.
std::optional<TypefaceEntry> ReadTypefaceLine(std::string_view line) noexcept;

}  // namespace zel::fontmap
