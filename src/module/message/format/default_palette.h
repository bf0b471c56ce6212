#pragma once

#include "module/contract/records/palette.h"

namespace zel::message {

/// Writes the 256 entries for a message without a palette section. Leaves palette_lead and palette_words unchanged.
void FillDefaultPalette(tag_palete& palette) noexcept;

}  // namespace zel::message
