#include "host/picture/field_overlay.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "host/picture/composite.h"
#include "host/picture/text_face.h"

namespace zel::picture {

namespace {

constexpr Rgba kFrameColour{0, 216, 255, 255};
constexpr Rgba kPlateColour{0, 24, 40, 208};
constexpr COLORREF kLabelColour = RGB(0xC8, 0xF4, 0xFF);
constexpr int kLabelEm = 12;        // lines
constexpr int kLabelAdvance = 7;    // pixels; the label's typeface has one width
constexpr int kLabelHeight = 14;    // lines of the plate
constexpr int kLabelBaseline = 11;  // lines below the plate's upper edge

/// Pixels from left to right - 1, lines from top to bottom - 1.
struct Box {
    int left, top, right, bottom;
};

void FillBox(Picture& picture, Box box, Rgba colour) {
    const int left = std::max(box.left, 0), right = std::min(box.right, picture.width);
    const int top = std::max(box.top, 0), bottom = std::min(box.bottom, picture.height);
    for (int y = top; y < bottom; ++y) {
        std::uint8_t* at =
            picture.rgba.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                                   static_cast<std::size_t>(std::max(left, 0))) *
                                      4;
        for (int x = left; x < right; ++x, at += 4) {
            Rgba ground;
            std::memcpy(&ground, at, 4);
            const Rgba mixed = Over(colour, ground);
            std::memcpy(at, &mixed, 4);
        }
    }
}

void DrawFrame(Picture& picture, Box box) {
    FillBox(picture, {box.left, box.top, box.right, box.top + 1}, kFrameColour);
    FillBox(picture, {box.left, box.bottom - 1, box.right, box.bottom}, kFrameColour);
    FillBox(picture, {box.left, box.top + 1, box.left + 1, box.bottom - 1}, kFrameColour);
    FillBox(picture, {box.right - 1, box.top + 1, box.right, box.bottom - 1}, kFrameColour);
}

std::string Label(const tag_tab_field& tab, std::size_t index) {
    const std::string_view name(tab.tab_name, kTabNameSize);
    const std::string_view text = name.substr(0, name.find('\0'));
    return text.empty() ? std::to_string(index + 1) : std::string(text);
}

// Above the frame, where the field's text doesn't stand; inside it when the picture ends there. Fields may begin in the
// same place: a label then stands to the right of those before it.
Box LabelBox(const Box& frame, std::size_t characters, std::vector<Box>& placed) {
    const int top = frame.top >= kLabelHeight ? frame.top - kLabelHeight : frame.top;
    const int width = static_cast<int>(characters) * kLabelAdvance + 5;
    Box box{frame.left, top, frame.left + width, top + kLabelHeight};
    for (const Box& other : placed) {
        const bool meet =
            box.left < other.right && other.left < box.right && box.top < other.bottom && other.top < box.bottom;
        if (meet) box = {other.right + 2, top, other.right + 2 + width, box.bottom};
    }
    placed.push_back(box);
    return box;
}

void DrawLabel(Picture& picture, TextFaces& faces, const Box& box, const std::string& text) {
    LOGFONT font{};
    font.lfHeight = -kLabelEm;
    font.lfWeight = 400;
    std::strcpy(font.lfFaceName, "DejaVu Sans Mono");
    FillBox(picture, box, kPlateColour);
    const Canvas canvas{picture.width, picture.height, picture.rgba};
    int pen = box.left + 3;
    for (const char character : text) {
        const TextGlyph* glyph = faces.Get(font, tag_CharInf{}, static_cast<unsigned char>(character));
        if (glyph != nullptr) {
            LayColour(canvas, pen + glyph->face.left, box.top + kLabelBaseline - glyph->face.top, glyph->face.width,
                      glyph->face.height, glyph->face.bytes, kLabelColour);
        }
        pen += kLabelAdvance;
    }
}

}  // namespace

void DrawTabFields(Picture& picture, const document::MessageRecord& message) {
    TextFaces faces;
    std::vector<Box> labels;
    for (std::size_t i = 0; i < message.tabs.size(); ++i) {
        const tag_tab_field& tab = message.tabs[i];
        const Box box{tab.tab_start, tab.tab_top, tab.tab_end, std::max<int>(tab.tab_bottom, tab.tab_top + 2)};
        DrawFrame(picture, box);
        const std::string label = Label(tab, i);
        DrawLabel(picture, faces, LabelBox(box, label.size(), labels), label);
    }
}

}  // namespace zel::picture
