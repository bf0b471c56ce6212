#pragma once

#include <cstdint>
#include <span>

#include "module/contract/records/char_entry.h"

namespace zel::font {

/// glyph_word in memory form, whose fields start at bit 0, from the file form, whose fields start at bit 31.
constexpr std::uint32_t RepackGlyphWord(std::uint32_t file) noexcept {
    const std::uint32_t a = file >> 26, b = file >> 20 & 0x3F, top = file >> 10 & 0x3FF, metric = file & 0x3FF;
    return a | b << 6 | top << 12 | metric << 22;
}
static_assert(RepackGlyphWord(0xFC000000) == 0x0000003F && RepackGlyphWord(0x000003FF) == 0xFFC00000);

/// Converts an entry of the character directory.
/// @param bytes  the entry; missing ones of its 10 bytes read as zeros.
tag_char_entry ConvertCharEntry(std::span<const std::uint8_t> bytes) noexcept;

/// Converts a character directory.
/// @param entries  receives every complete entry in `bytes`.
void ConvertCharEntries(std::span<const std::uint8_t> bytes, tag_char_entry* entries) noexcept;

}  // namespace zel::font
