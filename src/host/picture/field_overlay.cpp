#include "host/picture/field_overlay.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "base/field_text.h"
#include "host/picture/composite.h"
#include "host/picture/label.h"

namespace zel::picture {

namespace {

constexpr Rgba kFrameColour{0, 216, 255, 255};
constexpr Rgba kPlateColour{0, 24, 40, 208};
constexpr COLORREF kLabelColour = RGB(0xC8, 0xF4, 0xFF);
/// Height of a label's plate, and the baseline of its text below the plate's upper edge.
constexpr int kPlateHeight = 14;
constexpr int kPlateBaseline = 11;
/// Space to the left of the text in its plate, and to both sides of it together.
constexpr int kLeftPadding = 3;
constexpr int kPadding = 5;
/// Between plates that are side by side.
constexpr int kPlateGap = 2;

void DrawFrame(PixelView view, const PixelBox& box) {
    Blend(view.Part({box.left, box.top, box.right, box.top + 1}), kFrameColour);
    Blend(view.Part({box.left, box.bottom - 1, box.right, box.bottom}), kFrameColour);
    Blend(view.Part({box.left, box.top + 1, box.left + 1, box.bottom - 1}), kFrameColour);
    Blend(view.Part({box.right - 1, box.top + 1, box.right, box.bottom - 1}), kFrameColour);
}

/// A byte of a name is the code point of the same value.
std::u32string LabelText(const tag_tab_field& tab, std::size_t index) {
    std::string text(base::FieldText(tab.tab_name));
    if (text.empty()) text = std::to_string(index + 1);
    std::u32string codes;
    for (const char byte : text) codes += static_cast<unsigned char>(byte);
    return codes;
}

/// Places a plate above the frame, where it doesn't cover the field's text, or inside the frame at the picture's upper
/// edge. Where fields begin at the same place, each plate is to the right of those before it.
PixelBox PlacePlate(const PixelBox& frame, std::size_t characters, std::vector<PixelBox>& placed) {
    const int top = frame.top >= kPlateHeight ? frame.top - kPlateHeight : frame.top;
    const int width = static_cast<int>(characters) * kLabelAdvance + kPadding;
    PixelBox plate{frame.left, top, frame.left + width, top + kPlateHeight};
    for (const PixelBox& other : placed) {
        if (Intersection(plate, other).IsEmpty()) continue;
        plate.left = other.right + kPlateGap;
        plate.right = plate.left + width;
    }
    placed.push_back(plate);
    return plate;
}

}  // namespace

void DrawTabFields(Picture& picture, const document::MessageRecord& message) {
    const PixelView view = picture.View();
    TextRenderer renderer;
    std::vector<PixelBox> plates;
    for (std::size_t i = 0; i < message.tabs.size(); ++i) {
        const tag_tab_field& tab = message.tabs[i];
        const PixelBox box{tab.tab_start, tab.tab_top, tab.tab_end, std::max<int>(tab.tab_bottom, tab.tab_top + 2)};
        DrawFrame(view, box);
        const std::u32string text = LabelText(tab, i);
        const PixelBox plate = PlacePlate(box, text.size(), plates);
        Blend(view.Part(plate), kPlateColour);
        DrawLabel(view, renderer, plate.left + kLeftPadding, plate.top + kPlateBaseline, text, kLabelColour);
    }
}

}  // namespace zel::picture
