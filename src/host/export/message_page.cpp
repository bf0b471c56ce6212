#include "host/export/message_page.h"

#include <algorithm>
#include <string_view>

#include <nlohmann/json.hpp>

#include "host/document/document_reader.h"
#include "host/export/html_text.h"
#include "host/export/message_title.h"
#include "host/export/text_layer.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

/// The style before and after the proportions of the pictures.
constexpr std::string_view kStyleBegin = R"(
:root { color-scheme: light; }
body { margin: 0 auto; padding: 1.5rem; max-width: 60rem; font: 1rem/1.5 system-ui, sans-serif; color: #1c2430;
       background: #f6f7f9; }
h1 { margin: 0 0 1rem; font-size: 1.25rem; font-weight: 600; overflow-wrap: anywhere; }
h1 b { margin-right: .75rem; color: #5b6675; font-variant-numeric: tabular-nums; }
h2 { margin: 1.5rem 0 .25rem; font-size: 1rem; }
svg { display: block; width: 100%; height: auto; border: 1px solid #c3cad4;
      background: repeating-conic-gradient(#5d6671 0 25%, #6b7480 0 50%) 0 0 / 24px 24px; })";
constexpr std::string_view kStyleEnd = R"(
text { font-family: sans-serif; white-space: pre; fill: transparent; cursor: text; }
text::selection, tspan::selection { background: rgba(0, 120, 255, .55); fill: transparent; }
rect { fill: none; stroke: #00b4d8; stroke-width: 1.5; stroke-dasharray: 5 3; pointer-events: stroke; }
label { margin-right: 1rem; color: #5b6675; }
input { margin: .75rem .25rem .75rem 0; }
#fields:not(:checked) ~ svg rect { display: none; }
#letters:checked ~ svg text { fill: rgba(255, 0, 90, .8); }
ul, ol { margin: 0; padding-left: 1.5rem; overflow-wrap: anywhere; }
)";

/// The class of a picture of a video standard in the style: "l486" or "l576".
std::string StyleClass(VideoStandard standard) {
    return 'l' + std::to_string(ActiveLines(standard));
}

std::string MessageStyle() {
    std::string style(kStyleBegin);
    for (const VideoStandard standard : {VideoStandard::kNtsc, VideoStandard::kPal}) {
        const PixelAspect aspect = PixelAspectOf(standard);
        style += "\nsvg." + StyleClass(standard) +
                 " { aspect-ratio: " + std::to_string(picture::kPictureWidth * aspect.width) + " / " +
                 std::to_string(ActiveLines(standard) * aspect.height) + "; }";
    }
    return style.append(kStyleEnd);
}

std::string Attribute(std::string_view name, int value) {
    return ' ' + std::string(name) + "=\"" + std::to_string(value) + '"';
}

/// The row as one text of the picture. Each character is stretched to its own width, so that the selection covers what
/// is visible in any typeface of the browser.
std::string RowText(const PlacedRow& row) {
    // Fonts have their baseline at about three quarters of the row; a sans serif extends a quarter of its size below
    // it.
    const int size = std::max(row.height * 6 / 7, 1);
    std::string html = "<text" + Attribute("y", row.top + row.height * 3 / 4) + Attribute("font-size", size) + '>';
    for (const PlacedCharacter& character : row.characters) {
        html += "<tspan" + Attribute("x", character.x) + Attribute("textLength", character.width) +
                " lengthAdjust=\"spacingAndGlyphs\">" + HtmlText(character.text) + "</tspan>";
    }
    return html + "</text>\n";
}

std::string FieldBox(const library::RecordedField& field) {
    // The frame and some space around it: the numbers are from a file, and their differences must not overflow.
    const auto near = [](int place) { return std::clamp(place, -1000, 2000); };
    return "<rect" + Attribute("x", near(field.left)) + Attribute("y", near(field.top)) +
           Attribute("width", std::max(near(field.right) - near(field.left), 1)) +
           Attribute("height", std::max(near(field.bottom) - near(field.top), 1)) + "><title>" + HtmlText(field.name) +
           "</title></rect>\n";
}

/// The picture as an element of the page: the recorded file itself when it has the frame's size.
std::string PictureImage(ExportSubject& message) {
    const library::Recording& recording = message.Source();
    const picture::Picture& frame = message.Frame();
    const bool as_recorded = recording.width == frame.width && recording.height == frame.height;
    return "<image" + Attribute("width", frame.width) + Attribute("height", frame.height) +
           " preserveAspectRatio=\"none\" href=\"data:image/png;base64," +
           Base64(as_recorded ? recording.picture : picture::EncodePng(frame)) + "\"/>\n";
}

std::string Screen(ExportSubject& message) {
    const library::Recording& recording = message.Source();
    std::string html = "<svg class=\"" + StyleClass(recording.standard) + "\" viewBox=\"0 0 " +
                       std::to_string(picture::kPictureWidth) + ' ' + std::to_string(ActiveLines(recording.standard)) +
                       "\" preserveAspectRatio=\"none\">\n";
    if (!recording.picture.empty()) html += PictureImage(message);
    for (const PlacedRow& row : TextLayer(document::ReadDocument(document::ParseDocument(recording.document))))
        html += RowText(row);
    for (const library::RecordedField& field : recording.fields) html += FieldBox(field);
    return html + "</svg>\n";
}

std::string List(std::string_view heading, const std::vector<std::string>& texts) {
    if (texts.empty()) return {};
    std::string html = "<h2>" + std::string(heading) + "</h2>\n<ul>\n";
    for (const std::string& text : texts) html += "<li>" + HtmlText(text) + "</li>\n";
    return html + "</ul>\n";
}

}  // namespace

std::string MessagePage(ExportSubject& message) {
    const library::Recording& recording = message.Source();
    const std::string title = TitleOf(recording.text);
    std::vector<std::string> fields;
    for (const library::RecordedField& field : recording.fields) fields.push_back(field.name);
    std::string html = HtmlHead(message.Stem() + ' ' + title, MessageStyle());
    html += "<h1><b>" + message.Stem() + "</b>" + HtmlText(title) + "</h1>\n";
    if (!fields.empty()) {
        html += "<input type=\"checkbox\" id=\"fields\" checked><label for=\"fields\">Tab fields</label>\n";
    }
    html += "<input type=\"checkbox\" id=\"letters\"><label for=\"letters\">Text in place</label>\n";
    html += Screen(message) + List("Tab fields", fields) + List("Fonts", recording.fonts) +
            List("Warnings", recording.warnings);
    return html + "</body>\n</html>\n";
}

}  // namespace zel::exporter
