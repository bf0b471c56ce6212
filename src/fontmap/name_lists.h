#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The two name lists, line by line; pure functions over text.
//
// bitstream_fontlist.txt, behind two headings:        typeface_list.txt, behind two headings:
//   FAMILY [ =...] [TAB ...]           heading          TYPEFACE TAB... BITSTREAM NAME
//   TAB STYLE [ =...] TAB ... NUMBER   indented entry
//   NAME [ =...] TAB ... NUMBER        plain entry

/// One typeface of the Bitstream list.
struct BitstreamEntry {
    std::uint16_t number;
    std::string_view name;  ///< the built name: family, style and "BT", or name and "BT".

    /// What stands before the name's first blank.
    std::string_view FirstWord() const noexcept { return name.substr(0, name.find(' ')); }
};

/// Reads the lines of the Bitstream list in order, keeping the family that headings set.
class BitstreamLineReader {
  public:
    /// @param line  without its newline.
    /// @return the entry, whose name is good until the next line is read; nothing for a heading and for an indented
    /// line without a second TAB.
    std::optional<BitstreamEntry> Read(std::string_view line);

  private:
    std::string m_family;
    std::string m_name;
};

/// One line of the typeface list.
struct TypefaceEntry {
    std::string_view typeface;        ///< may be empty.
    std::string_view bitstream_name;  ///< to the end of the line, blanks and TABs included.
};

/// @param line  without its newline.
/// @return nothing for a line without a TAB, or with nothing behind its TABs.
std::optional<TypefaceEntry> ReadTypefaceLine(std::string_view line) noexcept;
