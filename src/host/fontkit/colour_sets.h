#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "module/contract/records/palette.h"
#include "module/font/format/draw_run_codes.h"

namespace zel::fontkit {

/// The colours of a palette's sets, by set and by colour index.
using ColourSets = std::array<std::array<font::RunColour, kSetEntries>, kColourSets>;

/// The sets of a message without a palette of its own.
ColourSets DefaultColourSets();

/// The sets with which an import draws a message: those of its palette, or else the default ones.
/// @param message  a whole message file; needed during the call only.
/// @throws std::runtime_error with the reason if the module would not read the message.
ColourSets ColourSetsOfMessage(std::span<const std::uint8_t> message);

/// "#RRGGBB".
std::string HexColour(font::RunColour colour);

}  // namespace zel::fontkit
