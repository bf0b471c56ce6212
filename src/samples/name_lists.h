#pragma once

#include <string>
#include <string_view>

/// Writers of the two text lists that map a font's number and name to an installed typeface. Both begin with two
/// heading lines. Every line ends in a line feed.
namespace zel::samples {

constexpr std::string_view kBitstreamListName = "bitstream_fontlist.txt";
constexpr std::string_view kTypefaceListName = "typeface_list.txt";

/// The list of Bitstream typefaces by number.
class BitstreamList {
  public:
    explicit BitstreamList(std::string_view heading_1 = "Bitstream typefaces",
                           std::string_view heading_2 = "Family or name, style, number");
    /// Sets the family of the indented entries that follow. @param annotation  another name of the typeface.
    BitstreamList& Family(std::string_view family, std::string_view annotation = "");
    /// An indented entry: the family's style `style`.
    BitstreamList& Style(std::string_view style, unsigned number, std::string_view annotation = "");
    /// A plain entry, a typeface without a family.
    BitstreamList& Plain(std::string_view name, unsigned number, std::string_view annotation = "");
    /// Any line. @param line  without its line feed.
    BitstreamList& Line(std::string_view line);

    const std::string& Written() const noexcept { return m_text; }

  private:
    std::string m_text;
};

/// The list of installed typefaces by Bitstream name.
class TypefaceList {
  public:
    explicit TypefaceList(std::string_view heading_1 = "Installed typefaces",
                          std::string_view heading_2 = "Typeface, Bitstream name");
    /// @param bitstream_name  ends in " BT".
    TypefaceList& Typeface(std::string_view typeface, std::string_view bitstream_name);
    TypefaceList& Line(std::string_view line);

    const std::string& Written() const noexcept { return m_text; }

  private:
    std::string m_text;
};

}  // namespace zel::samples
