#include "host/live/template_page.h"

#include <nlohmann/json.hpp>

#include "base/base64.h"
#include "base/sha256.h"
#include "host/live/definitions.h"
#include "host/live/scripts.h"

namespace zel::live {

namespace {

std::string Checksum(std::string_view text) {
    return "'sha256-" + base::Base64(base::Sha256Raw(text)) + "'";
}

/// As the text of an element.
std::string ElementText(std::string_view text) {
    std::string html;
    for (const char c : text) html += c == '&' ? "&amp;" : c == '<' ? "&lt;" : std::string(1, c);
    return html;
}

std::string Script(std::string_view attributes, std::string_view content) {
    return std::string("<script").append(attributes).append(">").append(content).append("</script>\n");
}

}  // namespace

std::string TemplatePage(const LiveForm& form, const LiveLook& look) {
    const std::string spx = "window.SPXGCTemplateDefinition = " + ScriptText(SpxDefinition(form, look)) + ";";
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
    html += "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src data:; script-src " +
            Checksum(spx) + " " + Checksum(PageScript()) + "; style-src " + Checksum(PageStyle()) +
            "; base-uri 'none'; form-action 'none'\">\n";
    html += "<title>" + ElementText(look.title) + "</title>\n<link rel=\"icon\" href=\"data:,\">\n<style>";
    html.append(PageStyle()).append("</style>\n");
    html += Script(R"( name="graphics-data-definition" type="application/json+gdd")",
                   ScriptText(DataDefinition(form, look)));
    html += Script("", spx);
    html += "</head>\n<body>\n";
    html += Script(R"( type="application/json" id="zeltrans-form")", ScriptText(FormJson(form, look)));
    html += Script("", PageScript());
    return html + "</body>\n</html>\n";
}

}  // namespace zel::live
