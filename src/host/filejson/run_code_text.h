#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "files/run_codes.h"

/// Run codes as text, one line for each line of the glyph. Every 32-bit word has exactly one text:
///
///     .               end of the glyph
///     |               end of the line
///     b12             12 pixels of the background; b12:4/9 with colour index 4 and level 9
///     c1x4            4 pixels of colour 1 at level 255; c1/128x4 at level 128
///     m1/128x4        likewise, blended
///     c2/255x1+       a trailing + stays in place
///     0x4001FFE1      a word of another form
namespace zel::filejson {

/// The lines of some codes; a line ends after its `|` and after a `.`.
std::vector<std::string> LinesOfCodes(std::span<const std::uint32_t> codes);

/// The code of one word of a line; empty for another text.
std::optional<std::uint32_t> CodeOfText(std::string_view text);

/// Appends the codes of a line, whose words are separated by blanks.
/// @return the first word that is none; empty if all are.
std::string_view AppendCodes(std::string_view line, files::RunCodes& codes);

}  // namespace zel::filejson
