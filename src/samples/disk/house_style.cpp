#include "samples/disk/house_style.h"

namespace zel::samples {

files::PaletteBlock HousePalette() {
    return MakePalette({{{0xFFFFFF, 0x101820},
                         {0xFFE37A, 0x2A2208},
                         {0x9CD0FF, 0x0C2038},
                         {0x9BE8A8, 0x0C2A14},
                         {0xFF8A78, 0x340C08},
                         {0xFFC24A, 0x301C04},
                         {0xC4CEDC, 0x141C28},
                         {0xF2F2F2, 0x181818}}});
}

files::MessageFile Styled(Page& page) {
    page.File().palette = HousePalette();
    return page.Finish();
}

}  // namespace zel::samples
