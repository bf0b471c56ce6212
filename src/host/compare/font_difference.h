#pragma once

#include <optional>

#include "host/compare/difference.h"
#include "host/picture/picture.h"
#include "module/message/format/byte_source.h"

namespace zel::compare {

/// What differs between two fonts.
struct FontDifference {
    Differences differences{};
    /// The glyphs that differ, see MarkedPicture: side by side from A, from B, and marked. Empty unless it is asked
    /// for, or if no glyph differs.
    std::optional<picture::Picture> picture{};
};

/// Compares two fonts: the header's values that are read, the blocks that hosts receive, and each glyph by its measures
/// and its pixels. A glyph that is stored differently and drawn the same is a difference of its own, and so is
/// one that differs and is too large to be drawn. Null for a file
/// that the import doesn't read as a font. Exchanged fonts give mirrored differences.
std::optional<FontDifference> CompareFonts(message::FileBytes& a, message::FileBytes& b, bool with_picture);

}  // namespace zel::compare
