#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "module/contract/records/zeltrans_api.h"
#include "platform/system/types.h"

struct EFFPAR;

namespace zel {

inline constexpr int kColourSets = 8;
inline constexpr int kSetEntries = 32;
/// Entries of a colour set with a meaning of their own.
inline constexpr int kFaceEntry = 1;
inline constexpr int kEdgeEntry = 2;
/// The set that gives a slot its default colours.
inline constexpr int kSlotColourSet = 7;

/// A stored entry (green, blue, unread, red from the top byte down) as a COLORREF; the unread byte is dropped.
constexpr COLORREF PackColour(std::uint32_t entry) noexcept {
    return (((entry >> 16 & 255U) << 8) + (entry >> 24)) << 8 | (entry & 255U);
}
static_assert(PackColour(0x12345678) == 0x341278);

}  // namespace zel

/// Palette block of a message, copied whole into the CZelFont that the host receives.
struct tag_palete {
    std::uint16_t palette_lead;                                     // 0  as in the file, not converted
    std::uint16_t palette_words;                                    // 2  size of the section in 16-bit words
    std::uint32_t colour_sets[zel::kColourSets][zel::kSetEntries];  // 4  entries, converted

    /// Index of the first set, 0 to 7, whose face colour, and with the effect's edge on whose edge colour too, are
    /// those of the effect; -1 without one.
    ZELTRANS_API int FindPaletteEntry(EFFPAR& effect);
};
static_assert(sizeof(tag_palete) == 257 * 4 && std::is_trivially_copyable_v<tag_palete>);
static_assert(offsetof(tag_palete, colour_sets) == 4);
