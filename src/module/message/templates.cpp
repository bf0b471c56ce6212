#include <array>
#include <cstdint>

#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/state/module_state.h"
#include "platform/framework/message_box.h"

using namespace zel;

namespace {

/// A font of the message and the limits of a row set in it.
struct FontGroup {
    std::uint16_t number;
    std::uint16_t row_top;
    std::uint16_t row_bottom;
    std::uint16_t font_flags;
    int slot;
};

class FontGroups {
  public:
    FontGroups(const CZelMessage& message, const CZelFont& fonts) {
        for (int slot = 0; slot < kFontSlots; ++slot) {
            const std::uint16_t number = message.GetSlotFontID(slot);
            const tag_font_header* header = fonts.m_Slots[slot].font_header;
            // Of several slots with the same font, only the first one counts.
            if (number == kNoFont || header == nullptr ||
                Find([number](const FontGroup& group) { return group.number == number; }) != nullptr)
                continue;
            m_groups[m_count++] = {number, static_cast<std::uint16_t>(header->row_top_offset + header->row_inset),
                                   static_cast<std::uint16_t>(header->font_height + header->row_inset + 2),
                                   header->font_flags, slot};
        }
    }

    template <typename Matches>
    const FontGroup* Find(Matches&& matches) const {
        for (std::size_t i = 0; i < m_count; ++i) {
            if (matches(m_groups[i])) return &m_groups[i];
        }
        return nullptr;
    }

  private:
    std::array<FontGroup, kFontSlots> m_groups{};
    std::size_t m_count = 0;
};

/// The font of a template.
struct TemplateFont {
    /// Value of char_font: the slot, or the tab field's own number.
    int number;
    /// Its limits are those of an empty row; null leaves the row's own limits.
    const FontGroup* limits;
    /// The tab field has no font of its own.
    bool is_default;
};

/// One pass over a message's tab fields.
class TemplateMaker {
  public:
    explicit TemplateMaker(const FontGroups& groups) noexcept : m_groups(groups) {}

    void Make(const tag_tab_field& tab, tag_msg_row& row);
    /// A template was made, and a field, though not necessarily the same one, has no font of its own.
    bool NeedsWarning() const noexcept { return m_used_default && m_created; }

  private:
    TemplateFont FindFont(const tag_tab_field& tab, const tag_msg_row& row) const;

    const FontGroups& m_groups;
    // The last group that a field matched. It also applies to later fields that match none.
    const FontGroup* m_last_match = nullptr;
    bool m_used_default = false;
    bool m_created = false;
};

TemplateFont TemplateMaker::FindFont(const tag_tab_field& tab, const tag_msg_row& row) const {
    const int font = tab.Font();
    if (font < kFontSlots) {
        const FontGroup* own = m_groups.Find([font](const FontGroup& group) { return group.slot == font; });
        if (own == nullptr) own = m_last_match;
        return {font, own, own == nullptr};
    }
    const FontGroup* fitting = m_groups.Find(
        [&row](const FontGroup& group) { return group.row_top == row.Top() && group.row_bottom == row.Bottom(); });
    // With the last match instead of no font at all, the template is visible.
    if (fitting == nullptr) fitting = m_last_match;
    return {fitting != nullptr ? fitting->slot : font, fitting, true};
}

void OpenEmptyRow(tag_msg_row& row, const FontGroup* limits) noexcept {
    row.SetFirstChar(0);
    row.chars[0].word3 = 0;
    if (limits == nullptr || limits->row_top == 0 || limits->row_bottom == 0 ||
        (limits->font_flags & kFontOwnLimits) != 0)
        return;
    row.SetTop(limits->row_top);
    if (row.Bottom() >= limits->row_bottom) row.SetBottom(limits->row_bottom);
}

bool ContainsText(const tag_tab_field& tab, const tag_msg_row& row) noexcept {
    const int start = tab.tab_start - kXOffset, end = tab.tab_end - kXOffset;
    for (int k = 0; k < row.CharCount(); ++k) {
        if (row.chars[k].X() >= start && row.chars[k].X() <= end) return true;
    }
    return false;
}

// Links the old end of the chain to the record after the last one.
void LinkLast(tag_msg_row& row) noexcept {
    for (int k = 0; k < row.CharCount(); ++k) {
        if (row.chars[k].Next() == kChainEnd) row.chars[k].SetNext(row.CharCount());
        row.chars[k].SetChainEnd(false);
    }
}

void TemplateMaker::Make(const tag_tab_field& tab, tag_msg_row& row) {
    constexpr std::uint16_t kBlankCode = 32 << 6;  // char_code 32 in word2
    const TemplateFont font = FindFont(tab, row);
    if (font.limits != nullptr) m_last_match = font.limits;
    m_used_default = m_used_default || font.is_default;
    int index = 0;
    if (row.Empty()) {
        OpenEmptyRow(row, font.limits);
    } else {
        index = row.CharCount();
        // A row of 63 characters has no free record: the field gets no template.
        if (ContainsText(tab, row) || index >= kRowChars) return;
        LinkLast(row);
    }
    tag_msg_char& blank = row.chars[index];
    blank.SetNext(kChainEnd);
    blank.SetChainEnd(true);
    row.SetCharCount(row.CharCount() + 1);
    blank.SetY(0);
    blank.SetX(tab.tab_start);
    blank.SetColourSet(tab.ColourSet());
    blank.word2 = static_cast<std::uint16_t>(kBlankCode + (font.number & 0x3F));
    row.SetEmpty(false);
    m_created = true;
}

}  // namespace

void CZelMessage::MakeTemplates(CZelTransDlg* dlg) {
    if (m_nTabs < 1 || m_pTabs == nullptr || dlg->m_pFont == nullptr) return;
    const FontGroups groups(*this, *dlg->m_pFont);
    TemplateMaker maker(groups);
    for (int i = 0; i < m_nTabs; ++i) maker.Make(m_pTabs[i], m_pRows[m_pTabs[i].Row()]);
    if (maker.NeedsWarning() && !IgnoreZelFontErrors())
        AfxMessageBox("Templates created with default font.\n", MB_OK, 0);
}
