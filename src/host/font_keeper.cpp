#include "host/font_keeper.h"

#include <algorithm>

namespace zel::host {

void FontKeeper::Take(CZelFont& fonts) {
    Release();
    m_set = &fonts;
    for (std::size_t slot = 0; slot < m_copies.size(); ++slot) m_copies[slot] = fonts.m_Slots[slot].font_copy;
}

std::optional<int> FontKeeper::SlotOf(const tag_font_memory* font_copy, int likely) const noexcept {
    if (font_copy == nullptr) return std::nullopt;
    const bool is_slot = likely >= 0 && static_cast<std::size_t>(likely) < m_copies.size();
    if (is_slot && m_copies[static_cast<std::size_t>(likely)] == font_copy) return likely;
    const auto found = std::find(m_copies.begin(), m_copies.end(), font_copy);
    if (found == m_copies.end()) return std::nullopt;
    return static_cast<int>(found - m_copies.begin());
}

void FontKeeper::Release() {
    m_set = nullptr;
    if (std::ranges::all_of(m_copies, [](const tag_font_memory* copy) { return copy == nullptr; })) return;
    CZelFont releaser;  // ReleaseFontData uses no member of the set
    for (tag_font_memory*& copy : m_copies) {
        if (copy == nullptr) continue;
        releaser.ReleaseFontData(copy);
        delete copy;
        copy = nullptr;
    }
}

void FontKeeper::ReleaseAndClearSet() {
    if (m_set != nullptr) {
        for (std::size_t slot = 0; slot < m_copies.size(); ++slot) {
            if (m_copies[slot] != nullptr) m_set->m_Slots[slot] = tag_font_memory{};
        }
    }
    Release();
}

}  // namespace zel::host
