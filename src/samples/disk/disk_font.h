#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "files/font_writer.h"
#include "samples/disk/edges.h"
#include "samples/disk/rasterizer.h"

/// Fonts of the demonstration disk: the file, and the measures that a layout needs.
namespace zel::samples {

/// How the characters of a font are drawn.
enum class Finish : std::uint8_t {
    /// In the message's colours, with face and edge.
    kRunCoded,
    /// Stored in colour, metal with a dark border.
    kChrome,
    kGold,
};

struct FontDesign {
    unsigned number = 0;
    /// Its first word determines a typeface, as does the id.
    std::string name{};
    /// Four digits; above 5000, the sum of 5000 and a Bitstream number.
    std::string id_text{};
    FaceChoice face{};
    Edge edge{};
    Finish finish = Finish::kRunCoded;
    unsigned flags = files::kPlainFont;
    /// Blank lines above the tallest character, the font's row_top_offset.
    unsigned headroom = 0;
};

/// A font and its measures.
struct DiskFont {
    unsigned number = 0;
    files::FontFile file{};
    /// The char_y of a row that uses this font only, in lines below row_y.
    int baseline = 0;
    /// Distance in pixels of a character's first column left of the pen; space for edges and overhanging strokes.
    int left_pad = 0;
    std::map<std::pair<char, char>, int> kerning{};

    int RowTop() const { return file.header.row_top_offset + file.header.row_inset; }
    int RowBottom() const { return file.header.font_height + file.header.row_inset + 2; }
    /// Pixels from a character's pen position to the next one.
    int Advance(char character) const;
    int Kerning(char left, char right) const;
};

/// Draws the printable ASCII characters and the signs from 160 to 191.
/// @throws std::runtime_error when the typeface is missing or can't be drawn.
DiskFont MakeDiskFont(const FontDesign& design);

/// The font of pictures: lower third plate, rule, strips and weather signs. Its baseline is at the pictures' top.
DiskFont MakeArtworkFont(unsigned number);

/// A sample block of two characters, with a byte of coverage for each pixel.
files::SampleBlock MakeSampleBlock(const FaceChoice& face);

}  // namespace zel::samples
