#include <array>
#include <cstdint>

#include "module/contract/zel_font.h"
#include "module/contract/zel_message.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/state/module_state.h"
#include "platform/framework/message_box.h"

using namespace zel;

namespace {

/// One font of the message: the limits of a row that is set in it.
struct FontGroup {
    std::uint16_t id;      // the font's number
    std::uint16_t top;     // row_top of such a row
    std::uint16_t bottom;  // row_bottom of such a row
    std::uint16_t flags;
    int slot;
};

class FontGroups {
  public:
    FontGroups(const CZelMessage& message, const CZelFont& fonts) {
        for (int slot = 0; slot < kFontSlots; ++slot) {
            const std::uint16_t id = message.GetSlotFontID(slot);
            const tag_font_header* header = fonts.m_Slots[slot].font_header;
            // The first slot of a font stands for it.
            if (id == kNoFont || header == nullptr ||
                Find([id](const FontGroup& group) { return group.id == id; }) != nullptr)
                continue;
            m_groups[m_count++] = {id, static_cast<std::uint16_t>(header->row_top_offset + header->row_inset),
                                   static_cast<std::uint16_t>(header->font_height + header->row_inset + 2),
                                   header->font_flags, slot};
        }
    }

    bool Empty() const noexcept { return m_count == 0; }

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

/// One pass over a message's tab fields.
class TemplateMaker {
  public:
    explicit TemplateMaker(const FontGroups& groups) noexcept : m_groups(groups) {}

    void Make(const tag_tab_field& tab, tag_msg_row& row);
    /// A template was made, and a field went without a font of its own, not necessarily the same one.
    bool ToldByDefault() const noexcept { return m_used_default && m_created; }

  private:
    int FindLimits(const tag_tab_field& tab, const tag_msg_row& row);
    void UseGroup(const FontGroup& group) noexcept;
    void UseDefault() noexcept;
    void OpenEmptyRow(tag_msg_row& row) const noexcept;
    static bool HoldsText(const tag_tab_field& tab, const tag_msg_row& row) noexcept;
    static void LinkLast(tag_msg_row& row) noexcept;

    const FontGroups& m_groups;
    std::uint16_t m_top = 0, m_bottom = 0, m_flags = 0;  // limits in force, kept from field to field until changed
    int m_slot = 0;                                      // of the group that the limits come from
    bool m_matched = false;                              // some field has found a group
    bool m_used_default = false;
    bool m_created = false;
};

void TemplateMaker::UseGroup(const FontGroup& group) noexcept {
    m_top = group.top;
    m_bottom = group.bottom;
    m_flags = group.flags;
    m_slot = group.slot;
    m_matched = true;
}

void TemplateMaker::UseDefault() noexcept {
    m_used_default = true;
    m_top = m_bottom = m_flags = 0;
}

// Sets the limits in force. @return the font slot of the template.
int TemplateMaker::FindLimits(const tag_tab_field& tab, const tag_msg_row& row) {
    const int font = tab.Font();
    if (m_groups.Empty()) {
        UseDefault();
        return font;
    }
    if (font < kFontSlots) {
        if (const FontGroup* group = m_groups.Find([font](const FontGroup& g) { return g.slot == font; })) {
            UseGroup(*group);
        } else if (!m_matched) {
            UseDefault();
        }
        return font;
    }
    const FontGroup* group =
        m_groups.Find([&row](const FontGroup& g) { return g.top == row.Top() && g.bottom == row.Bottom(); });
    if (group != nullptr) {
        UseGroup(*group);
        m_used_default = true;
        return group->slot;
    }
    // A field without a font on a row that fits none: once some field has matched, its limits and its font serve on, so
    // that the field gets a template that can be seen.
    if (m_matched) {
        m_used_default = true;
        return m_slot;
    }
    UseDefault();
    return font;
}

void TemplateMaker::OpenEmptyRow(tag_msg_row& row) const noexcept {
    row.SetFirstChar(0);
    if (m_top == 0 || m_bottom == 0 || (m_flags & kFontOwnLimits) != 0) return;
    row.SetTop(m_top);
    if (row.Bottom() >= m_bottom) row.SetBottom(m_bottom);
}

bool TemplateMaker::HoldsText(const tag_tab_field& tab, const tag_msg_row& row) noexcept {
    const int start = tab.tab_start - kXOffset, end = tab.tab_end - kXOffset;
    for (int k = 0; k < row.CharCount(); ++k) {
        if (row.chars[k].X() >= start && row.chars[k].X() <= end) return true;
    }
    return false;
}

// Lets the old end of the chain lead to the record behind the last.
void TemplateMaker::LinkLast(tag_msg_row& row) noexcept {
    for (int k = 0; k < row.CharCount(); ++k) {
        if (row.chars[k].Next() == kChainEnd) row.chars[k].SetNext(row.CharCount());
        row.chars[k].SetChainEnd(false);
    }
}

void TemplateMaker::Make(const tag_tab_field& tab, tag_msg_row& row) {
    constexpr std::uint16_t kBlankCode = 0x800;  // char_code 32
    const int font = FindLimits(tab, row);
    int index = 0;
    if (row.Empty()) {
        OpenEmptyRow(row);
        row.chars[0].word3 = 0;
    } else {
        index = row.CharCount();
        // A row of 63 characters has no record left: the field stays without a template.
        if (HoldsText(tab, row) || index >= kRowChars) return;
        LinkLast(row);
    }
    tag_msg_char& blank = row.chars[index];
    blank.SetNext(kChainEnd);
    blank.SetChainEnd(true);
    row.SetCharCount(row.CharCount() + 1);
    blank.SetY(0);
    blank.SetX(tab.tab_start);
    blank.SetColourSet(tab.ColourSet());
    blank.word2 = static_cast<std::uint16_t>(kBlankCode + (font & 0x3F));
    row.SetEmpty(false);
    m_created = true;
}

}  // namespace

void CZelMessage::MakeTemplates(CZelTransDlg* dlg) {
    if (m_nTabs < 1 || m_pTabs == nullptr || dlg->m_pFont == nullptr) return;
    const FontGroups groups(*this, *dlg->m_pFont);
    TemplateMaker maker(groups);
    for (int i = 0; i < m_nTabs; ++i) maker.Make(m_pTabs[i], m_pRows[m_pTabs[i].Row()]);
    if (maker.ToldByDefault() && !IgnoreZelFontErrors())
        AfxMessageBox("Templates created with default font.\n", MB_OK, 0);
}
