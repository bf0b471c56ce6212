#include "module/message/format/default_palette.h"

namespace zel::message {

void FillDefaultPalette(tag_palete& palette) noexcept {
    struct Set {
        std::uint32_t face, edge, ramp_start, ramp_step;
    };
    // black, green, blue, cyan, red, yellow, magenta, light grey; the legacy machine's own start-up colours
    static constexpr Set kSets[kColourSets] = {
        {0x0000FF00, 0x8080FF80, 0x0808FF08, 0x08080008}, {0xBF00FF00, 0x8000FF00, 0xFF08FF00, 0x00080000},
        {0x00BFFF00, 0x0080FF00, 0x00FFFF08, 0x00000008}, {0xBFBFFF00, 0x8080FF00, 0xFFFFFF08, 0x00000008},
        {0x0000FFBF, 0x0000FF80, 0x0800FFFF, 0x08000000}, {0xBF00FFBF, 0x8000FF80, 0xFF08FFFF, 0x00080000},
        {0x00BFFFBF, 0x0080FF80, 0x08FFFFFF, 0x08000000}, {0xD9D9FFD9, 0x8080FF80, 0xF8F8FFF8, 0U - 0x08080008U},
    };
    for (int set = 0; set < kColourSets; ++set) {
        std::uint32_t(&entries)[kSetEntries] = palette.colour_sets[set];
        entries[0] = 0x0000FE00;
        entries[kFaceEntry] = kSets[set].face;
        entries[kEdgeEntry] = kSets[set].edge;
        std::uint32_t ramp = kSets[set].ramp_start;
        for (int entry = 3; entry < kSetEntries; ++entry, ramp += kSets[set].ramp_step) entries[entry] = ramp;
    }
}

}  // namespace zel::message
