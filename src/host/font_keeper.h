#pragma once

#include <array>
#include <optional>
#include <vector>

#include "module/contract/zel_font.h"

namespace zel::host {

/// Owns the fonts that an import has passed to the host, and releases their data. The blocks of a slot are released
/// through its font_copy, which shares them: the font set may be destroyed before.
class FontKeeper {
  public:
    FontKeeper() = default;
    ~FontKeeper() { Release(); }
    FontKeeper(const FontKeeper&) = delete;
    FontKeeper& operator=(const FontKeeper&) = delete;

    /// Takes ownership of the fonts of a set, which remains the module's. Releases the fonts held before.
    void Take(CZelFont& fonts);

    /// Slot of a font_copy; empty for null and for one that is not held.
    /// @param likely  the slot to try first.
    std::optional<int> SlotOf(const tag_font_memory* font_copy, int likely = 0) const noexcept;

    /// Releases the data of all fonts held, and their copies.
    void Release();
    /// As Release, and clears the slots of the set, which must still exist.
    void ReleaseAndClearSet();

  private:
    CZelFont* m_set = nullptr;
    std::array<tag_font_memory*, kFontSlots> m_copies{};
};

}  // namespace zel::host
