#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "files/font_writer.h"

/// The encoding data of a font, divided into its glyphs.
namespace zel::filejson {

/// A part of the encoding data: the codes of a glyph, or bytes that no entry of the directory points at.
struct EncodingPart {
    /// The first character whose glyph begins here.
    std::optional<unsigned> code{};
    files::RunCodes codes{};
    files::Bytes bytes{};

    /// Whether a glyph's codes end with the end of the glyph, and not before.
    bool IsWhole() const;
    std::size_t Size() const noexcept { return code ? 4 * codes.size() : bytes.size(); }
};

/// Where an entry's glyph_offset comes from.
struct GlyphPlace {
    /// The entry of another character, which has the same glyph.
    std::optional<unsigned> same_as{};
    /// The value itself, where no part of the encoding data begins.
    std::optional<std::uint32_t> offset{};
};

/// The encoding data in file order; an entry without a place has a part of its own. Parts are whole as far as the
/// glyphs don't overlap.
struct GlyphLayout {
    std::vector<EncodingPart> parts{};
    std::array<GlyphPlace, files::kFontCharCount> places{};
};

/// Whether an entry points at run codes.
constexpr bool IsRunCoded(const files::CharEntry& entry) noexcept {
    return entry.glyph_kind != files::CharEntry::kStored &&
           (entry.glyph_kind & (files::CharEntry::kRunCoded | files::CharEntry::kRunCodedToo)) != 0;
}

GlyphLayout LayoutOf(const files::FontFile& font);

/// Sets the encoding data and the directory's offsets.
/// @param layout  each part's code is that of a run-coded entry, and each same_as that of a part.
void ApplyLayout(const GlyphLayout& layout, files::FontFile& font);

}  // namespace zel::filejson
