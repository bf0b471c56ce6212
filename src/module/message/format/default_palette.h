#pragma once

#include "module/contract/records/palette.h"

namespace zel::message {

/// The 256 entries that hold where a file brings no palette; the two words in front are left alone.
void FillDefaultPalette(tag_palete& palette) noexcept;

}  // namespace zel::message
