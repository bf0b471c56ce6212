#pragma once

#include "module/contract/records/font_memory.h"

namespace zel::font {

/// Frees all blocks of a slot except font_copy, and clears their pointers.
void ReleaseFontBlocks(tag_font_memory& font) noexcept;

}  // namespace zel::font
