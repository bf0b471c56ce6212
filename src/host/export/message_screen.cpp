#include "host/export/message_screen.h"

#include <algorithm>
#include <string_view>

#include <nlohmann/json.hpp>

#include "host/document/document_reader.h"
#include "host/export/html_text.h"
#include "host/export/text_layer.h"

namespace zel::exporter {

namespace {

/// The class of a picture of a video standard in the style: "l486" or "l576".
std::string StyleClass(VideoStandard standard) {
    return 'l' + std::to_string(ActiveLines(standard));
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

}  // namespace

std::string MessageScreen(ExportSubject& message, const std::string& picture) {
    const library::Recording& recording = message.Source();
    const int lines = ActiveLines(recording.standard);
    std::string html = "<svg class=\"" + StyleClass(recording.standard) + "\" viewBox=\"0 0 " +
                       std::to_string(picture::kPictureWidth) + ' ' + std::to_string(lines) +
                       "\" preserveAspectRatio=\"none\">\n";
    if (!picture.empty()) {
        html += "<image" + Attribute("width", picture::kPictureWidth) + Attribute("height", lines) +
                " preserveAspectRatio=\"none\" href=\"" + picture + "\"/>\n";
    }
    for (const PlacedRow& row : TextLayer(document::ReadDocument(document::ParseDocument(recording.document))))
        html += RowText(row);
    for (const library::RecordedField& field : recording.fields) html += FieldBox(field);
    return html + "</svg>\n";
}

std::string ScreenStyle() {
    std::string style;
    for (const VideoStandard standard : {VideoStandard::kNtsc, VideoStandard::kPal}) {
        const PixelAspect aspect = PixelAspectOf(standard);
        style += "\nsvg." + StyleClass(standard) +
                 " { aspect-ratio: " + std::to_string(picture::kPictureWidth * aspect.width) + " / " +
                 std::to_string(ActiveLines(standard) * aspect.height) + "; }";
    }
    return style;
}

std::string HtmlList(std::string_view heading, const std::vector<std::string>& texts) {
    if (texts.empty()) return {};
    std::string html = "<h2>" + std::string(heading) + "</h2>\n<ul>\n";
    for (const std::string& text : texts) html += "<li>" + HtmlText(text) + "</li>\n";
    return html + "</ul>\n";
}

}  // namespace zel::exporter
