#include "module/contract/records/edge.h"
#include "module/contract/records/effpar.h"
#include "module/contract/records/font_memory.h"
#include "module/contract/zel_message.h"
#include "module/translate/font_face.h"

using namespace zel;

namespace {

bool HasDrawableGlyph(const tag_font_memory& slot) noexcept {
    for (std::uint32_t code = 0; code < kDirectoryEntries; ++code) {
        const tag_char_entry* entry = slot.Entry(code);
        if (entry != nullptr && entry->HasGlyph()) return true;
    }
    return false;
}

}  // namespace

void CZelMessage::MakeFontDescription(tag_font_memory* slot, LOGFONT* lf, int slot_index) {
    if (lf == nullptr) return;
    translate::InitLogFont(lf);
    const tag_font_header& header = *slot->font_header;
    const std::string_view name = header.Name();
    if (translate::IsTrueTypeName(name)) {
        translate::ApplyTrueTypeName(name, *lf);
    } else if (m_pOwner != nullptr) {
        CString found;
        translate::ApplyFontMaps(header, *m_pOwner, found, *lf);
    } else {
        if (name.find(" Bold ") != std::string_view::npos) lf->lfWeight = 700;
        if (name.find(" Italic ") != std::string_view::npos) lf->lfItalic = 1;
        translate::WriteLegacyFace(*lf, slot_index, name);
    }
    translate::ApplyFontHeight(header, *lf);
    // One drawable glyph makes the slot a legacy font. The host then receives an installed face per character only.
    if (HasDrawableGlyph(*slot)) translate::WriteLegacyFace(*lf, slot_index, name);
}

void CZelMessage::ApplySlotEffects(tag_font_memory* slot, EFFPAR* effect) {
    if (effect == nullptr) return;
    *effect = EFFPAR{};
    const tag_font_header& header = *slot->font_header;
    effect->effect_ratio = 0.75;
    effect->effect_const = 4;
    effect->edge_type = header.EdgeType();
    effect->edge_on = HasEdge(header.EdgeType()) ? 1 : 0;
    effect->edge_angle = EdgeAngle(header.EdgeDirection());
    effect->edge_size = header.edge_size;
    if (m_pPalette == nullptr) return;
    effect->face_colour = PackColour(m_pPalette->colour_sets[kSlotColourSet][kFaceEntry]);
    effect->edge_colour = PackColour(m_pPalette->colour_sets[kSlotColourSet][kEdgeEntry]);
}
