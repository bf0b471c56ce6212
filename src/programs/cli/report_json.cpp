#include "programs/cli/report_json.h"

#include <cstdio>

#include <nlohmann/json.hpp>

#include "host/document/json_version.h"
#include "inspect/report_text.h"
#include "programs/cli/json_output.h"

namespace zel::cli {

namespace {

using Json = nlohmann::ordered_json;

std::string Colour(std::uint32_t rgb) {
    char text[16];
    std::snprintf(text, sizeof text, "#%06X", static_cast<unsigned>(rgb));
    return text;
}

template <typename T>
Json OrNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json();
}

Json Sections(const inspect::FileReport& report) {
    Json sections = Json::array();
    for (const inspect::Section& section : report.sections) {
        sections.push_back({{"name", section.name},
                            {"offset", section.offset},
                            {"size", section.size},
                            {"present", section.present},
                            {"count", section.count}});
    }
    return sections;
}

Json Rows(const inspect::MessageReport& message) {
    Json rows = Json::array();
    for (const inspect::RowReport& row : message.rows) {
        rows.push_back({{"row", row.index},
                        {"y", row.y},
                        {"top", row.top},
                        {"bottom", row.bottom},
                        {"empty", row.empty},
                        {"characters", row.characters},
                        {"text", row.runs},
                        {"slots", row.slots},
                        {"colour_sets", row.colour_sets}});
    }
    return rows;
}

Json Message(const inspect::MessageReport& message) {
    Json fonts = Json::array(), palette = Json::array(), tabs = Json::array();
    for (const inspect::SlotReport& slot : message.slots) {
        fonts.push_back({{"slot", slot.slot}, {"number", OrNull(slot.number)}, {"characters", slot.characters}});
    }
    for (const inspect::SetColours& set : message.palette) {
        palette.push_back({{"face", Colour(set.face)}, {"edge", Colour(set.edge)}});
    }
    for (const inspect::TabReport& tab : message.tabs) {
        tabs.push_back({{"name", tab.name},
                        {"start", tab.start},
                        {"end", tab.end},
                        {"row", tab.row},
                        {"slot", OrNull(tab.slot)},
                        {"colour_set", tab.colour_set},
                        {"rejected", TextOrNull(tab.rejected)}});
    }
    return {{"type_name", message.type_name},
            {"lines", ActiveLines(message.standard)},
            {"frame", message.frame},
            {"row_count", message.row_count},
            {"y_offset", message.y_offset},
            {"fonts", fonts},
            {"own_palette", message.own_palette},
            {"palette", palette},
            {"background", OrNull(message.background)},
            {"flash_font", OrNull(message.flash_font)},
            {"rows", Rows(message)},
            {"tab_fields", tabs}};
}

Json Glyph(const std::optional<inspect::GlyphReport>& glyph) {
    if (!glyph) return {};
    return {{"code", glyph->code}, {"width", glyph->width}, {"height", glyph->height}};
}

Json Font(const inspect::FontReport& font) {
    return {{"type_name", font.type_name},
            {"name", font.name},
            {"id", font.id},
            {"height", font.height},
            {"row_top_offset", font.row_top_offset},
            {"row_inset", font.row_inset},
            {"edge_type", font.edge_type},
            {"edge_angle", font.edge_angle},
            {"edge_size", font.edge_size},
            {"flags", font.flags},
            {"encoding_size", font.encoding_size},
            {"stored_glyphs", font.stored_glyphs},
            {"run_coded_glyphs", font.run_coded_glyphs},
            {"without_glyph", font.without_glyph},
            {"smallest", Glyph(font.smallest)},
            {"largest", Glyph(font.largest)}};
}

}  // namespace

const char* VerdictName(inspect::Verdict verdict) noexcept {
    switch (verdict) {
        case inspect::Verdict::kWhole:
            return "whole";
        case inspect::Verdict::kReadable:
            return "readable";
        case inspect::Verdict::kBroken:
            return "broken";
        case inspect::Verdict::kForeign:
            break;
    }
    return "foreign";
}

std::string ReportJson(const inspect::FileReport& report) {
    Json json = {{"version", document::kJsonVersion},
                 {"name", report.name},
                 {"kind", inspect::KindName(report.kind)},
                 {"verdict", VerdictName(report.verdict)},
                 {"reason", TextOrNull(report.reason)},
                 {"size", report.size},
                 {"file_type", OrNull(report.file_type)},
                 {"sections", Sections(report)},
                 {"defects", report.defects},
                 {"remarks", report.remarks}};
    if (report.message) json["message"] = Message(*report.message);
    if (report.font) json["font"] = Font(*report.font);
    if (report.picture) json["picture"] = {{"width", report.picture->width}, {"height", report.picture->height}};
    if (report.list) json["list"] = {{"lines", report.list->lines}, {"entries", report.list->entries}};
    return JsonText(json);
}

std::string UnreadableJson(const std::string& name, const std::string& reason) {
    return JsonText({{"version", document::kJsonVersion},
                     {"name", name},
                     {"kind", nullptr},
                     {"verdict", "unreadable"},
                     {"reason", reason},
                     {"size", nullptr},
                     {"file_type", nullptr},
                     {"sections", Json::array()},
                     {"defects", Json::array()},
                     {"remarks", Json::array()}});
}

}  // namespace zel::cli
