#include "host/picture/label.h"

#include <cstring>

#include "host/picture/composite.h"

namespace zel::picture {

namespace {

LOGFONT LabelFont() noexcept {
    constexpr int kEmHeight = 12;
    LOGFONT font{};
    font.lfHeight = -kEmHeight;
    font.lfWeight = 400;
    std::strcpy(font.lfFaceName, "DejaVu Sans Mono");
    return font;
}

}  // namespace

void DrawLabel(PixelView view, TextRenderer& renderer, int x, int baseline, std::span<const char32_t> text,
               COLORREF colour) {
    const LOGFONT font = LabelFont();
    for (const char32_t code : text) {
        if (const TextGlyph* glyph = renderer.Get(font, tag_CharInf{}, code)) {
            BlendCoverage(view, x, baseline, glyph->face, colour);
        }
        x += kLabelAdvance;
    }
}

}  // namespace zel::picture
