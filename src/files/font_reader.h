#pragma once

#include <cstdint>
#include <span>

#include "files/description.h"
#include "files/font_writer.h"

namespace zel::files {

/// Reads a font file without loss: WriteFont of the description gives the same bytes, whatever they are.
///
/// The sections are where an import reads them. Where an import stops (a negative size, a sample with rows of no
/// width), the character tables, if there are any, follow and the rest is `tail`. So is everything from the first
/// stored record that is shorter than its head of 12 bytes: the records after it overlap. What the end of the file cuts
/// off is zero, and `size` is set. The file's glyph_offset values of stored glyphs are kept, although an import
/// replaces them. An optional field has a value only if it differs from the computed one.
/// @param file  needed during the call only.
Description<FontFile> ReadFont(std::span<const std::uint8_t> file);

}  // namespace zel::files
