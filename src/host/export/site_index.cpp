#include "host/export/site_index.h"

#include <map>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "host/export/file_names.h"
#include "host/export/html_text.h"
#include "host/export/message_title.h"
#include "host/export/site_resources.h"

namespace zel::exporter {

namespace {

using Json = nlohmann::json;

/// Around the data. The begin is nowhere else in a page, since texts are escaped.
constexpr std::string_view kDataBegin = "<script type=\"application/json\" id=\"data\">";
constexpr std::string_view kDataEnd = "</script>";

/// Names that many messages have, each once.
class NameList {
  public:
    std::size_t PlaceOf(const std::string& name) {
        const auto [entry, is_new] = m_places.try_emplace(name, m_names.size());
        if (is_new) m_names.push_back(name);
        return entry->second;
    }
    std::vector<std::size_t> PlacesOf(const std::vector<std::string>& names) {
        std::vector<std::size_t> places;
        for (const std::string& name : names) places.push_back(PlaceOf(name));
        return places;
    }
    const std::vector<std::string>& Names() const noexcept { return m_names; }

  private:
    std::map<std::string, std::size_t> m_places;
    std::vector<std::string> m_names;
};

/// The beginning of the names of a disk's files.
std::string StemBegin(const std::string& disk) {
    const std::string stem = StemOf(disk, 0);
    return stem.substr(0, stem.size() - FileNumber(0).size());
}

/// The form is described in site/index.js.
Json DataOf(const std::vector<SiteEntry>& entries) {
    NameList disks, fonts, fields, folders;
    Json messages = Json::array();
    for (const SiteEntry& entry : entries) {
        const std::size_t name = entry.source.rfind('/') + 1;  // 0 without a folder
        messages.push_back({disks.PlaceOf(entry.key.disk), entry.key.number, entry.text, fonts.PlacesOf(entry.fonts),
                            fields.PlacesOf(entry.fields), folders.PlaceOf(entry.source.substr(0, name)),
                            entry.source.substr(name), entry.has_picture, entry.title});
    }
    Json disk_list = Json::array();
    for (const std::string& disk : disks.Names()) disk_list.push_back({{"name", disk}, {"stem", StemBegin(disk)}});
    return {{"disks", std::move(disk_list)},
            {"fonts", fonts.Names()},
            {"fields", fields.Names()},
            {"folders", folders.Names()},
            {"messages", std::move(messages)}};
}

/// JSON for a script element: nothing in it can end the element.
std::string JsonText(const Json& json) {
    const std::string text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        if (c == '<') {
            escaped += "\\u003c";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string Filter(std::string_view name, std::string_view all) {
    std::string html = "<select id=\"";
    html.append(name).append("\" aria-label=\"").append(name).append("\"><option value=\"\">").append(all);
    return html + "</option></select>\n";
}

std::vector<std::string> NamesAt(const Json& names, const Json& places) {
    std::vector<std::string> found;
    for (const Json& place : places) found.push_back(names.at(place.get<std::size_t>()).get<std::string>());
    return found;
}

SiteEntry ReadEntry(const Json& data, const Json& message) {
    SiteEntry entry;
    entry.key = {data.at("disks").at(message.at(0).get<std::size_t>()).at("name").get<std::string>(),
                 message.at(1).get<int>()};
    entry.text = message.at(2).get<std::string>();
    entry.fonts = NamesAt(data.at("fonts"), message.at(3));
    entry.fields = NamesAt(data.at("fields"), message.at(4));
    entry.source =
        data.at("folders").at(message.at(5).get<std::size_t>()).get<std::string>() + message.at(6).get<std::string>();
    entry.has_picture = message.at(7).get<bool>();
    entry.title = message.at(8).get<std::string>();
    return entry;
}

}  // namespace

SiteEntry SiteEntryOf(const library::Recording& recording) {
    SiteEntry entry{
        {recording.disk, recording.number}, TitleOf(recording.text), recording.text, recording.fonts, {}, {},
        !recording.picture.empty()};
    for (const library::RecordedField& field : recording.fields) entry.fields.push_back(field.name);
    if (!recording.sources.empty()) entry.source = recording.sources.front().path;
    return entry;
}

std::string SiteIndex(const std::vector<SiteEntry>& entries) {
    std::string html = HtmlHead("Messages", SiteIndexStyle(), {"'self' file:", SiteScript()});
    html +=
        "<header>\n<h1>Messages</h1>\n"
        "<input type=\"search\" id=\"query\" placeholder=\"Search all texts (/)\" aria-label=\"Search all texts\" "
        "autocomplete=\"off\" spellcheck=\"false\">\n";
    html += Filter("disk", "All disks") + Filter("font", "All fonts") + Filter("field", "All tab fields");
    html +=
        "<span id=\"count\" role=\"status\"></span>\n</header>\n"
        "<main>\n<div id=\"messages\" role=\"list\" aria-label=\"Messages\"></div>\n"
        "<p id=\"nothing\" hidden>No message has all these words.</p>\n"
        "<noscript><p>This index needs JavaScript. The page of each message, in the folder pages, does "
        "not.</p></noscript>\n"
        "</main>\n";
    html.append(kDataBegin).append(JsonText(DataOf(entries))).append(kDataEnd).append("\n<script>");
    return html.append(SiteScript()).append("</script>\n</body>\n</html>\n");
}

std::optional<std::vector<SiteEntry>> ReadSiteIndex(std::string_view page) {
    const std::size_t begin = page.find(kDataBegin);
    if (begin == std::string_view::npos) return {};
    page.remove_prefix(begin + kDataBegin.size());
    try {
        const Json data = Json::parse(page.substr(0, page.find(kDataEnd)));
        std::vector<SiteEntry> entries;
        for (const Json& message : data.at("messages")) entries.push_back(ReadEntry(data, message));
        return entries;
    } catch (const Json::exception&) {
        return {};
    }
}

}  // namespace zel::exporter
