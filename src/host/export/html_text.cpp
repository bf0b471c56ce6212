#include "host/export/html_text.h"

#include "base/sha256.h"
#include "host/export/utf8.h"

namespace zel::exporter {

std::string HtmlText(std::string_view text) {
    std::string html;
    for (const char c : ValidUtf8(text)) {
        switch (c) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            case '"':
                html += "&quot;";
                break;
            case '\'':
                html += "&#39;";
                break;
            default:
                html += c;
        }
    }
    return html;
}

std::string HtmlHead(std::string_view title, std::string_view style) {
    return HtmlHead(title, style, {});
}

std::string HtmlHead(std::string_view title, std::string_view style, const HtmlPolicy& allowed) {
    const auto by_checksum = [](std::string_view text) { return "'sha256-" + Base64(base::Sha256Raw(text)) + "'"; };
    std::string policy = "default-src 'none'; img-src " + std::string(allowed.images) + "; style-src " +
                         by_checksum(style) + "; base-uri 'none'; form-action 'none'";
    if (!allowed.script.empty()) policy += "; script-src " + by_checksum(allowed.script);
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
    html += "<meta http-equiv=\"Content-Security-Policy\" content=\"" + policy + "\">\n";
    html += "<meta name=\"referrer\" content=\"no-referrer\">\n";
    html += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
    html += "<title>" + HtmlText(title) + "</title>\n<style>";
    html += style;
    html += "</style>\n</head>\n<body>\n";
    return html;
}

}  // namespace zel::exporter
