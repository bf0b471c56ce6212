#include "host/export/site_page.h"

#include <string_view>
#include <vector>

#include "host/export/html_text.h"
#include "host/export/message_screen.h"
#include "host/export/message_title.h"
#include "host/export/recording_json.h"
#include "host/export/site_resources.h"

namespace zel::exporter {

namespace {

/// A text as a part of an address.
std::string Percent(std::string_view text) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string address;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool is_plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                              std::string_view("-._~/").find(c) != std::string_view::npos;
        if (is_plain) {
            address += c;
        } else {
            address.append("%").append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 15]);
        }
    }
    return address;
}

std::string Link(const std::string& address, std::string_view text) {
    return "<a href=\"" + address + "\">" + HtmlText(text) + "</a>";
}

/// A heading and a list of texts, each with a link to the messages that have it, too.
std::string LinkedList(std::string_view heading, std::string_view filter, const std::vector<std::string>& names) {
    if (names.empty()) return {};
    std::string html = "<h2>" + std::string(heading) + "</h2>\n<ul>\n";
    for (const std::string& name : names) {
        const std::string address = "../index.html#" + std::string(filter) + '=' + Percent(name);
        html += "<li>" + Link(address, name.empty() ? "(no name)" : name) + "</li>\n";
    }
    return html + "</ul>\n";
}

std::string Rows(const std::string& text) {
    if (text.empty()) return {};
    std::string html = "<h2>Text</h2>\n<ul class=\"rows\">\n";
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        if (text.find_first_not_of(' ', begin) < end)
            html += "<li>" + HtmlText(std::string_view(text).substr(begin, end - begin)) + "</li>\n";
        begin = end + 1;
    }
    return html + "</ul>\n";
}

std::string Downloads(const std::vector<std::string>& files) {
    if (files.empty()) return {};
    std::string html = "<h2>Files</h2>\n<ul>\n";
    for (const std::string& file : files) html += "<li>" + Link("../" + Percent(file), file) + "</li>\n";
    return html + "</ul>\n";
}

std::string Fact(std::string_view name, std::string_view value) {
    if (value.empty()) return {};
    return "<dt>" + std::string(name) + "</dt><dd>" + HtmlText(value) + "</dd>\n";
}

std::string Facts(const library::Recording& recording) {
    return "<h2>Recording</h2>\n<dl>\n" + Fact("Disk", recording.disk) +
           Fact("Number", std::to_string(recording.number)) + Fact("Kind", KindName(recording.kind)) +
           Fact("Standard", NameOf(recording.standard)) + Fact("Recorded", recording.recorded_at) +
           Fact("Source", recording.sources.empty() ? "" : recording.sources.front().path) + "</dl>\n";
}

}  // namespace

std::string SitePage(ExportSubject& message, const std::string& picture) {
    const library::Recording& recording = message.Source();
    const std::string title = TitleOf(recording.text);
    std::vector<std::string> fields;
    for (const library::RecordedField& field : recording.fields) fields.push_back(field.name);
    std::string html = HtmlHead(message.Stem() + ' ' + title, std::string(SitePageStyle()) + ScreenStyle() + '\n',
                                {.images = "'self' file:"});
    html += "<nav>" + Link("../index.html", "All messages") + "</nav>\n";
    html += "<h1><b>" + message.Stem() + "</b>" + HtmlText(title) + "</h1>\n";
    if (!fields.empty())
        html += "<input type=\"checkbox\" id=\"fields\" checked><label for=\"fields\">Tab fields</label>\n";
    html += "<input type=\"checkbox\" id=\"letters\"><label for=\"letters\">Text in place</label>\n";
    html += MessageScreen(message, picture.empty() ? picture : "../" + picture);
    html += Rows(recording.text) + LinkedList("Tab fields", "field", fields) +
            LinkedList("Fonts", "font", recording.fonts) + HtmlList("Warnings", recording.warnings);
    std::vector<std::string> files = message.FilesBeside();
    if (!picture.empty()) files.insert(files.begin(), picture);
    html += Downloads(files) + Facts(recording);
    return html + "</body>\n</html>\n";
}

}  // namespace zel::exporter
