#pragma once

#include <span>

#include "host/picture/pixel_view.h"
#include "host/picture/text_renderer.h"
#include "platform/system/types.h"

namespace zel::picture {

/// Pixels from one character of a label to the next. The typeface has one width.
inline constexpr int kLabelAdvance = 7;

/// Writes a short text in the small typeface that labels pictures and thumbnails, 12 pixels high.
/// @param x         position of the first character's pen.
/// @param baseline  row of pixels directly below the baseline.
/// @param text      code points.
void DrawLabel(PixelView view, TextRenderer& renderer, int x, int baseline, std::span<const char32_t> text,
               COLORREF colour);

}  // namespace zel::picture
