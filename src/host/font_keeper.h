#pragma once

#include <array>
#include <optional>
#include <vector>

#include "module/contract/zel_font.h"

namespace zel::host {

/// Holds the fonts that an import has handed over, and gives their data back when the host is done with them. The
/// blocks of a slot are released through its font_copy, which shares them, since the font set itself may be gone by
/// then.
class FontKeeper {
  public:
    FontKeeper() = default;
    ~FontKeeper() { Release(); }
    FontKeeper(const FontKeeper&) = delete;
    FontKeeper& operator=(const FontKeeper&) = delete;

    /// Takes over the fonts of a set, which stays the module's. What was held before is released.
    void Take(CZelFont& fonts);

    /// Slot of a font_copy; nothing for null and for one that isn't held.
    /// @param likely  where to look first.
    std::optional<int> SlotOf(const tag_font_memory* font_copy, int likely = 0) const noexcept;

    /// Releases the data of all fonts held, and their copies.
    void Release();
    /// As above; the slots of the set, which must still be alive, are emptied too.
    void ReleaseAndClearSet();

  private:
    CZelFont* m_set = nullptr;
    std::array<tag_font_memory*, kFontSlots> m_copies{};
};

}  // namespace zel::host
