#include <array>
#include <bitset>
#include <cstring>
#include <memory>

#include "module/contract/records/char_inf.h"
#include "module/contract/records/edge.h"
#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/state/module_state.h"
#include "module/translate/font_face.h"
#include "platform/framework/exceptions.h"

using namespace zel;

namespace {

constexpr unsigned kEmptyRowCharacter = 13;
// Codes of 192 and above have no directory entry; the host receives such a character as one without a glyph.
constexpr tag_char_entry kNoEntry{};
constexpr tag_char_entry kNoDirectory[kDirectoryEntries]{};

/// Colours and edge of the characters of one slot and colour set, in the layout of the callback's record.
struct CharStyle {
    COLORREF face_colour;
    float effect_ratio;
    std::int32_t edge_type, edge_angle, edge_size;
    COLORREF edge_colour;
};

static_assert(offsetof(tag_CharInf, edge_colour) - offsetof(tag_CharInf, face_colour) ==
              offsetof(CharStyle, edge_colour));

/// The values that all characters of a slot share, computed at the first one: the description in both forms, the
/// styles, and the sizes of run-coded glyphs.
struct SlotFace {
    /// Header of the font; the other members are set together with it.
    const tag_font_header* header = nullptr;
    /// kDirectoryEntries entries, all without a glyph for a slot without a directory.
    const tag_char_entry* directory;
    /// row_top of a row set in this font.
    int base;
    LOGFONT text_form, bitmap_form;
    std::array<CharStyle, kColourSets> styles;
    /// CharacterWalk::m_found before and after the look-up.
    CString found_before, found;
    /// By the low 8 bits of the code: whether `sizes` has the glyph's size, and the size in pixels.
    std::bitset<256> measured;
    std::array<SIZE, 256> sizes;

    // The description of a font that is in the maps doesn't depend on earlier look-ups.
    bool IsValidFor(const tag_font_header& of, const CString& found_now) const noexcept {
        return header == &of &&
               (found.GetString() != found_before.GetString() || found_now.GetString() == found_before.GetString());
    }
};

/// Vertical position of a row in lines: y of all its characters, and its limits.
struct RowPosition {
    int y, top, depth;
};

/// One walk over the characters of a message. The record and the LOGFONT last for the whole walk; nothing is allocated
/// per character.
class CharacterWalk {
  public:
    CharacterWalk(const CZelMessage& message, CZelFont& fonts, CWnd* host, bool baseline_align, bool tt_convert);
    void Run();

  private:
    void EmitEmptyRow(const tag_msg_row& row);
    void EmitRow(const tag_msg_row& row);
    void EmitChar(const RowPosition& row, const tag_msg_char& character, tag_font_memory& slot, bool first,
                  const tag_msg_char* next);
    [[gnu::noinline]] void DropChar(const tag_msg_char& character);
    void StartRow(const RowPosition& row);
    SlotFace& FaceOf(int slot, const tag_font_header& header);
    // Not inlined, to keep the code for each character small.
    [[gnu::noinline]] void MakeFace(int slot, const tag_font_header& header, std::unique_ptr<SlotFace>& slot_face);
    void DescribeFont(const tag_font_header& header, LOGFONT& font);
    void FillBitmapForm(const tag_msg_char& character, tag_font_memory& slot, const tag_char_entry& entry,
                        SlotFace& face, const tag_msg_char* next);

    const CZelMessage& m_message;
    CZelFont& m_fonts;
    CWnd* const m_host;
    const bool m_baseline_align;
    const bool m_tt_convert;
    const std::unique_ptr<LOGFONT> m_log_font;
    // Zeroed, so that a field that was never set is 0.
    const std::unique_ptr<tag_CharInf> m_info;
    std::array<std::unique_ptr<SlotFace>, kFontSlots> m_faces;
    // The name of the last successful look-up; see ApplyFontMaps. Never cleared, so that a font that is in no map has
    // the style of an earlier character.
    CString m_found;
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
    translate::InitLogFont(m_log_font.get());
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

void CharacterWalk::StartRow(const RowPosition& row) {
    m_info->row_start = 1;
    m_info->place_flag = 1;
    m_info->row_top = row.top;
    m_info->row_depth = row.depth;
}

void CharacterWalk::EmitEmptyRow(const tag_msg_row& row) {
    m_info->x = m_message.m_pMsgHeader->frame_left + kXOffset;
    m_info->y = row.Y();
    m_info->base_shift = 0;
    m_info->reserved_zero = 0;
    m_info->font_copy = nullptr;
    m_info->slot = -1;
    StartRow({row.Y(), row.Top(), row.Bottom() - row.Top()});
    state::CallOnChar(m_host, m_info.get(), kEmptyRowCharacter);
}

// Sets the values that a dropped character changes nevertheless.
void CharacterWalk::DropChar(const tag_msg_char& character) {
    translate::InitLogFont(m_log_font.get());
    m_info->row_start = 0;
    m_info->mf_flag = false;
    m_info->char_code = character.Code();
}

// The walk ends after char_count characters, or at the index 63, for which there is no record.
void CharacterWalk::EmitRow(const tag_msg_row& row) {
    const int count = row.CharCount(), first = row.FirstChar();
    const RowPosition position{row.Y(), row.Top(), row.Bottom() - row.Top()};
    int index = first;
    for (int step = 0; step < count && index != kChainEnd; ++step) {
        const tag_msg_char& character = row.chars[index];
        const int font = character.Font(), next = character.Next();
        if (font >= kFontSlots) {
            DropChar(character);
        } else if (tag_font_memory& slot = m_fonts.m_Slots[font]; slot.font_header == nullptr) {
            DropChar(character);
            break;  // As in the legacy importer, no further character of the row is emitted.
        } else {
            const bool has_next = step != count - 1 && next != kChainEnd;
            EmitChar(position, character, slot, index == first, has_next ? &row.chars[next] : nullptr);
        }
        index = next;
    }
    m_info->font_copy = nullptr;
    m_info->slot = -1;
}

void CharacterWalk::DescribeFont(const tag_font_header& header, LOGFONT& font) {
    const std::string_view name = header.Name();
    translate::InitLogFont(&font);
    if (translate::IsTrueTypeName(name)) {
        translate::ApplyTrueTypeName(name, font);
    } else {
        translate::ApplyFontMaps(header, *m_message.m_pOwner, m_found, font);
    }
    translate::ApplyFontHeight(header, font);
}

SlotFace& CharacterWalk::FaceOf(int slot, const tag_font_header& header) {
    std::unique_ptr<SlotFace>& face = m_faces[static_cast<std::size_t>(slot)];
    if (!face || !face->IsValidFor(header, m_found)) {
        MakeFace(slot, header, face);
    } else if (m_found.GetString() != face->found.GetString()) {
        m_found = face->found;
    }
    return *face;
}

void CharacterWalk::MakeFace(int slot, const tag_font_header& header, std::unique_ptr<SlotFace>& slot_face) {
    if (!slot_face) slot_face = std::make_unique_for_overwrite<SlotFace>();
    SlotFace& face = *slot_face;
    if (face.header != &header) face.measured.reset();
    face.header = &header;
    const tag_char_entry* const directory = m_fonts.m_Slots[slot].char_directory;
    face.directory = directory != nullptr ? directory : kNoDirectory;
    face.base = header.row_inset + header.row_top_offset;
    for (std::size_t set = 0; set < face.styles.size(); ++set) {
        const auto& colours = m_message.m_pPalette->colour_sets[set];
        face.styles[set] = {PackColour(colours[kFaceEntry]),
                            0.75F,
                            header.EdgeType(),
                            EdgeAngle(header.EdgeDirection()),
                            header.edge_size,
                            PackColour(colours[kEdgeEntry])};
    }
    face.found_before = m_found;
    DescribeFont(header, face.text_form);
    face.found = m_found;
    face.bitmap_form = face.text_form;
    translate::WriteLegacyFace(face.bitmap_form, slot, header.Name());
    face.bitmap_form.lfPitchAndFamily = 34;
}

/// @param first  `character` is the first one of its row.
/// @param next   the record of the next character of the row; null for the last one.
void CharacterWalk::EmitChar(const RowPosition& row, const tag_msg_char& character, tag_font_memory& slot, bool first,
                             const tag_msg_char* next) {
    SlotFace& face = FaceOf(character.Font(), *slot.font_header);
    const unsigned code = static_cast<unsigned>(character.Code()) & 0xFF;
    const tag_char_entry& entry = code < kDirectoryEntries ? face.directory[code] : kNoEntry;
    const bool stored = entry.IsStored(), bitmap_form = stored || !m_tt_convert;
    tag_CharInf& info = *m_info;

    *m_log_font = bitmap_form ? face.bitmap_form : face.text_form;
    std::memcpy(reinterpret_cast<std::uint8_t*>(&info) + offsetof(tag_CharInf, face_colour),
                &face.styles[static_cast<std::size_t>(character.ColourSet())], sizeof(CharStyle));
    info.x = character.X() + kXOffset;
    info.y = row.y;
    info.place_flag = static_cast<std::uint8_t>(character.PlaceFlag());
    info.row_start = 0;
    info.slot = character.Font();
    info.char_code = character.Code();
    info.glyph_metric = entry.Metric();
    info.reserved_zero = 0;
    info.mf_flag = false;
    if (first) StartRow(row);
    // In a row that is set in one font, the second term is 0.
    const int base_shift = (character.Y() - entry.Top()) - (row.top - face.base);
    if (bitmap_form) {
        info.base_shift = base_shift;
        info.font_copy = slot.font_copy;
        info.colour_set = stored ? -1 : character.ColourSet();
        FillBitmapForm(character, slot, entry, face, next);
    } else {
        info.base_shift = m_baseline_align ? 0 : base_shift;
        info.font_copy = nullptr;
        info.colour_set = -1;
    }
    state::CallOnChar(m_host, m_info.get(), code);
    info.message_start = 0;
}

void CharacterWalk::FillBitmapForm(const tag_msg_char& character, tag_font_memory& slot, const tag_char_entry& entry,
                                   SlotFace& face, const tag_msg_char* next) {
    const unsigned code = static_cast<unsigned>(character.Code()) & 0xFF;
    // A stored glyph is measured in its file each time, as its size isn't kept in memory.
    if (entry.IsStored() || !face.measured[code]) {
        int unused_top = 0;
        const CRect rect = m_fonts.GetMFRect(reinterpret_cast<FontAddress>(&slot), character.Font(), code, unused_top,
                                             &m_info->mf_flag);
        face.sizes[code] = {rect.right - rect.left, rect.bottom - rect.top};
        face.measured.set(code);
    }
    const SIZE size = face.sizes[code];
    m_info->glyph_height = size.cy;
    m_info->glyph_y = character.Y() + (entry.IsStored() ? 1 : 0);
    m_info->place_flag = 1;
    m_info->glyph_step = next != nullptr ? next->X() - character.X() : size.cx;
}

}  // namespace

void CZelMessage::EmitCharacters(CWnd* host, CZelFont* fonts, bool baseline_align, bool tt_convert) {
    CharacterWalk(*this, *fonts, host, baseline_align, tt_convert).Run();
}
