#include <array>
#include <cstring>
#include <memory>

#include "font/zel_font.h"
#include "message/zel_message.h"
#include "pipeline/module_state.h"
#include "platform/framework/exceptions.h"
#include "translate/char_inf.h"
#include "translate/edge.h"
#include "translate/font_face.h"

namespace {

constexpr unsigned kEmptyRowCharacter = 13;
// Codes of 192 and above have no directory entry; such a character reaches the host as one without a glyph.
constexpr tag_char_entry kNoEntry{};

/// What all characters of a slot share, worked out at the first of them: the description in both forms, and the sizes
/// of run-coded glyphs.
struct SlotFace {
    const tag_font_header* header = nullptr;  // of the font that this was made from
    LOGFONT text_form{}, bitmap_form{};
    CString found_before, found;  // CharacterWalk::m_found before and after the look-up
    std::array<CSize, kDirectoryEntries> sizes{};

    // A font that the maps know is described alike whatever was found before.
    bool Holds(const tag_font_header& of, const CString& found_now) const noexcept {
        return header == &of &&
               (found.GetString() != found_before.GetString() || found_now.GetString() == found_before.GetString());
    }
};

/// One walk over a message. The record, the LOGFONT and the texts live for the whole of it; nothing is allocated per
/// character.
class CharacterWalk {
  public:
    CharacterWalk(const CZelMessage& message, CZelFont& fonts, CWnd* host, bool baseline_align, bool tt_convert);
    void Run();

  private:
    void EmitEmptyRow(const tag_msg_row& row);
    void EmitRow(const tag_msg_row& row);
    void EmitChar(const tag_msg_row& row, int index, bool last_step);
    void StartRow(const tag_msg_row& row);
    SlotFace& FaceOf(int slot, const tag_font_header& header);
    void DescribeFont(const tag_font_header& header, LOGFONT& font);
    CSize GlyphSizeOf(const tag_msg_char& character, tag_font_memory& slot, const tag_char_entry& entry,
                      SlotFace& face);
    void FillBitmapForm(const tag_msg_row& row, const tag_msg_char& character, const tag_char_entry& entry, CSize size,
                        bool last_step);

    const CZelMessage& m_message;
    CZelFont& m_fonts;
    CWnd* const m_host;
    const bool m_baseline_align;
    const bool m_tt_convert;
    const std::unique_ptr<LOGFONT> m_log_font;
    const std::unique_ptr<tag_CharInf> m_info;  // zeroed: a field never set is 0
    CZelFont m_scratch;
    std::array<SlotFace, kFontSlots> m_faces;
    CString m_found;  // never cleared: a font that no map knows goes by the look-up of an earlier character
};

CharacterWalk::CharacterWalk(const CZelMessage& message, CZelFont& fonts, CWnd* host, bool baseline_align,
                             bool tt_convert)
    : m_message(message),
      m_fonts(fonts),
      m_host(host),
      m_baseline_align(baseline_align),
      m_tt_convert(tt_convert),
      m_log_font(std::make_unique<LOGFONT>()),
      m_info(std::make_unique<tag_CharInf>()) {}

void CharacterWalk::Run() {
    m_info->log_font = m_log_font.get();
    m_info->left_margin = m_message.m_pMsgHeader->frame_left;
    InitLogFont(m_log_font.get());
    m_info->message_start = 1;
    static_assert(sizeof m_fonts.m_Palette == sizeof *m_message.m_pPalette);
    std::memcpy(m_fonts.m_Palette, m_message.m_pPalette, sizeof m_fonts.m_Palette);
    for (int r = 0; r < m_message.m_pMsgHeader->RowCount(); ++r) {
        const tag_msg_row& row = m_message.m_pRows[r];
        m_info->row_start = 0;
        m_info->row_index = r;
        m_info->mf_flag = false;
        if (row.Empty()) {
            EmitEmptyRow(row);
        } else {
            EmitRow(row);
        }
    }
}

void CharacterWalk::StartRow(const tag_msg_row& row) {
    m_info->row_start = 1;
    m_info->place_flag = 1;
    m_info->row_top = row.Top();
    m_info->row_depth = row.Bottom() - row.Top();
}

void CharacterWalk::EmitEmptyRow(const tag_msg_row& row) {
    m_info->x = m_message.m_pMsgHeader->frame_left + kXOffset;
    m_info->y = row.Y();
    m_info->base_shift = 0;
    m_info->reserved_zero = 0;
    m_info->font_copy = nullptr;
    m_info->slot = -1;
    StartRow(row);
    CallOnChar(m_host, m_info.get(), kEmptyRowCharacter);
}

// The count ends the walk, not the index 63: only a chain that comes to 63 too early ends there, as there is no such
// record.
void CharacterWalk::EmitRow(const tag_msg_row& row) {
    int index = row.FirstChar();
    for (int step = 0; step < row.CharCount() && index != kChainEnd; ++step) {
        const tag_msg_char& character = row.chars[index];
        // A character that is then dropped leaves these four in the record all the same.
        m_info->row_start = 0;
        m_info->mf_flag = false;
        m_info->char_code = character.Code();
        const bool has_slot = character.Font() < kFontSlots;
        const bool empty_slot = has_slot && m_fonts.m_Slots[character.Font()].font_header == nullptr;
        if (!has_slot || empty_slot) InitLogFont(m_log_font.get());
        // An empty slot holds the walk at its record, so no further character of the row is emitted.
        if (empty_slot) break;
        if (has_slot) EmitChar(row, index, step == row.CharCount() - 1);
        index = character.Next();
    }
    m_info->font_copy = nullptr;
    m_info->slot = -1;
}

void CharacterWalk::DescribeFont(const tag_font_header& header, LOGFONT& font) {
    const std::string_view name = header.Name();
    InitLogFont(&font);
    if (IsTrueTypeName(name)) {
        ApplyTrueTypeName(name, font);
    } else {
        ApplyFontMaps(header, *m_message.m_pOwner, m_found, font);
    }
    ApplyFontHeight(header, font);
}

SlotFace& CharacterWalk::FaceOf(int slot, const tag_font_header& header) {
    SlotFace& face = m_faces[static_cast<std::size_t>(slot)];
    if (face.Holds(header, m_found)) {
        if (m_found.GetString() != face.found.GetString()) m_found = face.found;
        return face;
    }
    if (face.header != &header) face.sizes = {};
    face.header = &header;
    face.found_before = m_found;
    DescribeFont(header, face.text_form);
    face.found = m_found;
    face.bitmap_form = face.text_form;
    WriteLegacyFace(face.bitmap_form, slot, header.Name());
    face.bitmap_form.lfPitchAndFamily = 34;
    return face;
}

CSize CharacterWalk::GlyphSizeOf(const tag_msg_char& character, tag_font_memory& slot, const tag_char_entry& entry,
                                 SlotFace& face) {
    const unsigned code = static_cast<unsigned>(character.Code()) & 0xFF;
    const auto measure = [&] {
        int unused_top = 0;
        const CRect rect = m_scratch.GetMFRect(reinterpret_cast<FontAddress>(&slot), character.Font(), code, unused_top,
                                               &m_info->mf_flag);
        return CSize(rect.right - rect.left, rect.bottom - rect.top);
    };
    if (!entry.IsRunCoded()) return measure();
    CSize& size = face.sizes[code];  // only a code with an entry is run-coded
    if (size.cy == 0) size = measure();
    return size;
}

void CharacterWalk::FillBitmapForm(const tag_msg_row& row, const tag_msg_char& character, const tag_char_entry& entry,
                                   CSize size, bool last_step) {
    m_info->glyph_height = size.cy;
    m_info->glyph_y = character.Y() + (entry.IsStored() ? 1 : 0);
    m_info->place_flag = 1;
    const bool has_next = !last_step && character.Next() != kChainEnd;
    m_info->glyph_step = has_next ? row.chars[character.Next()].X() - character.X() : size.cx;
}

void CharacterWalk::EmitChar(const tag_msg_row& row, int index, bool last_step) {
    const tag_msg_char& character = row.chars[index];
    tag_font_memory& slot = m_fonts.m_Slots[character.Font()];
    const tag_font_header& header = *slot.font_header;
    const unsigned code = static_cast<unsigned>(character.Code()) & 0xFF;
    const tag_char_entry* found_entry = slot.Entry(code);
    const tag_char_entry& entry = found_entry != nullptr ? *found_entry : kNoEntry;
    tag_CharInf& info = *m_info;

    SlotFace& face = FaceOf(character.Font(), header);
    const bool bitmap_form = entry.IsStored() || !m_tt_convert;
    *m_log_font = bitmap_form ? face.bitmap_form : face.text_form;
    info.x = character.X() + kXOffset;
    info.y = row.Y();
    info.place_flag = character.PlaceFlag() ? 1 : 0;
    if (index == row.FirstChar()) StartRow(row);

    // In a row set in one font the second bracket is 0.
    const int base_shift = (character.Y() - entry.Top()) - (row.Top() - header.row_inset - header.row_top_offset);
    info.base_shift = bitmap_form || !m_baseline_align ? base_shift : 0;
    if (bitmap_form) FillBitmapForm(row, character, entry, GlyphSizeOf(character, slot, entry, face), last_step);

    info.reserved_zero = 0;
    const auto& colours = m_message.m_pPalette->colour_sets[character.ColourSet()];
    info.face_colour = PackColour(colours[kFaceEntry]);
    info.edge_colour = PackColour(colours[kEdgeEntry]);
    info.edge_type = header.EdgeType();
    info.edge_angle = EdgeAngle(header.EdgeDirection());
    info.edge_size = header.edge_size;
    info.glyph_metric = entry.Metric();
    info.slot = character.Font();
    info.effect_ratio = 0.75F;
    info.colour_set = bitmap_form && !entry.IsStored() ? character.ColourSet() : -1;
    info.font_copy = bitmap_form ? slot.font_copy : nullptr;
    CallOnChar(m_host, m_info.get(), code);
    info.message_start = 0;
}

}  // namespace

void CZelMessage::EmitCharacters(CWnd* host, CZelFont* fonts, bool baseline_align, bool tt_convert) {
    CharacterWalk(*this, *fonts, host, baseline_align, tt_convert).Run();
}
