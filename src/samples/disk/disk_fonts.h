#pragma once

#include <vector>

#include "samples/disk/disk_font.h"
#include "samples/name_lists.h"

namespace zel::samples {

/// The fonts of the demonstration disk. The last number of a name is the size in lines.
struct FontShelf {
    DiskFont lantern_bold_38;   ///< .0001  sans, bold
    DiskFont lantern_28;        ///< .0002  sans; with tables and a sample block
    DiskFont lantern_shade_32;  ///< .0003  sans, bold, small drop shadow
    DiskFont harbour_bold_46;   ///< .0012  serif, bold, border
    DiskFont lantern_shadow;    ///< .0014  sans, bold, drop shadow to the lower right
    DiskFont harbour_shadow;    ///< .0015  serif, bold, drop shadow to the lower left
    DiskFont lantern_offset;    ///< .0016  sans, bold, condensed, offset
    DiskFont harbour_slant_34;  ///< .0018  serif, slanted, font_flags 18 with a sample block
    DiskFont quay_bold_64;      ///< .0020  mono, bold, border
    DiskFont quay_30;           ///< .0021  mono, small drop shadow
    DiskFont chrome_64;         ///< .0031  serif, stored in colour
    DiskFont gold_52;           ///< .0032  sans, bold, stored in colour
    DiskFont dejavu_bold_34;    ///< .0040  a name with "TT "
    DiskFont artwork;           ///< .0060  pictures

    /// All of them, by number.
    std::vector<const DiskFont*> All() const;
};

/// @throws std::runtime_error when a typeface is missing.
FontShelf MakeFontShelf();

/// The lists that map the fonts' names and ids to installed typefaces.
BitstreamList MakeBitstreamList();
TypefaceList MakeTypefaceList();

}  // namespace zel::samples
