#include "host/export/message_page.h"

#include <string_view>

#include "host/export/html_text.h"
#include "host/export/message_screen.h"
#include "host/export/message_title.h"

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

/// The picture as a part of the page: the recorded file itself when it has the frame's size.
std::string EmbeddedPicture(ExportSubject& message) {
    const library::Recording& recording = message.Source();
    if (recording.picture.empty()) return {};
    return "data:image/png;base64," + Base64(message.FramePng());
}

}  // namespace

std::string MessagePage(ExportSubject& message) {
    const library::Recording& recording = message.Source();
    const std::string title = TitleOf(recording.text);
    std::vector<std::string> fields;
    for (const library::RecordedField& field : recording.fields) fields.push_back(field.name);
    std::string html =
        HtmlHead(message.Stem() + ' ' + title, std::string(kStyleBegin) + ScreenStyle() + std::string(kStyleEnd));
    html += "<h1><b>" + message.Stem() + "</b>" + HtmlText(title) + "</h1>\n";
    if (!fields.empty()) {
        html += "<input type=\"checkbox\" id=\"fields\" checked><label for=\"fields\">Tab fields</label>\n";
    }
    html += "<input type=\"checkbox\" id=\"letters\"><label for=\"letters\">Text in place</label>\n";
    html += MessageScreen(message, EmbeddedPicture(message)) + HtmlList("Tab fields", fields) +
            HtmlList("Fonts", recording.fonts) + HtmlList("Warnings", recording.warnings);
    return html + "</body>\n</html>\n";
}

}  // namespace zel::exporter
