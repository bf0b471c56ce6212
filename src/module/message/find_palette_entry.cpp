#include "module/contract/records/effpar.h"
#include "module/contract/records/palette.h"

using namespace zel;

int tag_palete::FindPaletteEntry(EFFPAR& effect) {
    for (int set = 0; set < kColourSets; ++set) {
        const bool face = PackColour(colour_sets[set][kFaceEntry]) == effect.face_colour;
        const bool edge = effect.edge_on == 0 || PackColour(colour_sets[set][kEdgeEntry]) == effect.edge_colour;
        if (face && edge) return set;
    }
    return -1;
}
