#pragma once

#include <string>

#include "host/picture/picture.h"

namespace zel::desktop {

/// A font's glyphs in one picture, and what there is to know of it. Texts are UTF-8.
struct FontSheet {
    std::string file;  ///< it was read from, this system's path.
    std::string name;
    int height = 0;  ///< lines
    int glyphs = 0;
    picture::Picture picture;
    std::string remark;   ///< glyphs that aren't shown, or not wholly; empty without any.
    std::string failure;  ///< why there is no sheet; empty when there is one.
};

/// Reads a font by the module, without a screen, and draws its glyphs.
FontSheet MakeFontSheet(const std::string& file);

}  // namespace zel::desktop
