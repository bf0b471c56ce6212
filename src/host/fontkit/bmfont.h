#pragma once

#include <string>

#include "host/fontkit/atlas.h"
#include "host/fontkit/kit_names.h"

namespace zel::fontkit {

/// The description of a font with its pages in one colour set, as the generator of AngelCode defined it and game
/// engines read it: the text form. A character's id is its code, which is that of Unicode. The pages are coloured, with
/// straight alpha: unicode=1, packed=0, outline=0, every Chnl 0, chnl=15.
std::string BmFontText(const FontArt& art, const Atlas& atlas, const KitNames& names, unsigned set);

/// The same in the XML form.
std::string BmFontXml(const FontArt& art, const Atlas& atlas, const KitNames& names, unsigned set);

}  // namespace zel::fontkit
