#pragma once

#include <string>

#include "host/picture/picture.h"

namespace zel::desktop {

/// A font's glyphs in one picture. Texts are UTF-8.
struct FontSheet {
    /// The file that was read, in this system's form.
    std::string file;
    std::string name;
    /// In pixels.
    int height = 0;
    int glyphs = 0;
    picture::Picture picture;
    /// Describes glyphs that are missing or cut off in the picture; else empty.
    std::string note;
    /// Why there is no sheet; else empty.
    std::string failure;
};

/// Reads a font with the module, without a screen, and draws its glyphs.
FontSheet MakeFontSheet(const std::string& file);

}  // namespace zel::desktop
