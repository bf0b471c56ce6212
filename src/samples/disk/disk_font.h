#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "samples/disk/edges.h"
#include "samples/disk/rasterizer.h"
#include "samples/font_writer.h"

/// Fonts of the demonstration disk: the file and what a layout has to know of it.
namespace zel::samples {

/// How the characters of a font are drawn.
enum class Finish : std::uint8_t {
    kRunCoded,  ///< in the colours of the message, face and edge
    kChrome,    ///< stored in colour, metal with a dark border
    kGold,
};

struct FontDesign {
    unsigned number = 0;
    std::string name{};     ///< its first word leads to a typeface, as does the id
    std::string id_text{};  ///< four digits; above 5000 a Bitstream number and 5000
    FaceChoice face{};
    Edge edge{};
    Finish finish = Finish::kRunCoded;
    unsigned flags = kPlainFont;
    unsigned headroom = 0;  ///< blank lines above the tallest character, the font's row_top_offset
};

/// A font and its measures. `baseline` is the char_y of a row set in this font alone, in lines below row_y. A
/// character's first column stands `left_pad` pixels left of the pen, the room that edges and overhanging strokes need.
struct DiskFont {
    unsigned number = 0;
    FontFile file{};
    int baseline = 0;
    int left_pad = 0;
    std::map<std::pair<char, char>, int> kerning{};

    int RowTop() const { return file.header.row_top_offset + file.header.row_inset; }
    int RowBottom() const { return file.header.font_height + file.header.row_inset + 2; }
    /// Pixels from the pen of a character to the pen of the next.
    int Advance(char character) const;
    int Kerning(char left, char right) const;
};

/// Draws the printable ASCII characters and the signs from 160 to 191.
/// @throws std::runtime_error when the typeface is missing or can't be drawn.
DiskFont MakeDiskFont(const FontDesign& design);

/// The font of pictures: lower third plate, rule, strips and weather signs. Its baseline is the pictures' top.
DiskFont MakeArtworkFont(unsigned number);

/// A sample block of two short texts, a byte of coverage for each pixel.
SampleBlock MakeSampleBlock(const FaceChoice& face);

}  // namespace zel::samples
