#include "programs/cli/verify_json.h"

#include <nlohmann/json.hpp>

#include "host/document/json_version.h"
#include "inspect/report_text.h"
#include "inspect/verify_text.h"
#include "programs/cli/json_output.h"
#include "programs/cli/report_json.h"

namespace zel::cli {

namespace {

using Json = nlohmann::ordered_json;

Json IntegerOrNull(bool applies, std::int64_t value) {
    return applies ? Json(value) : Json();
}

Json PlaceJson(const inspect::Finding& finding, const inspect::Place& place) {
    const bool is_character = finding.record == inspect::RecordKind::kCharacter;
    const bool is_row = finding.record == inspect::RecordKind::kRow;
    return {{"offset", place.offset},
            {"size", place.size},
            {"value", IntegerOrNull(place.value != inspect::Place::kNoValue, place.value)},
            {"where", TextOrNull(inspect::RecordName(finding, place))},
            {"row", IntegerOrNull(is_row || is_character, is_row ? place.index : place.row)},
            {"index", IntegerOrNull(finding.record != inspect::RecordKind::kFile && !is_row, place.index)}};
}

Json FindingJson(const inspect::Finding& finding) {
    const inspect::RuleText& rule = inspect::TextOf(finding.rule);
    Json places = Json::array();
    for (const inspect::Place& place : finding.places) places.push_back(PlaceJson(finding, place));
    return {{"severity", finding.Kind() == inspect::Severity::kFault ? "fault" : "note"},
            {"rule", rule.name},
            {"section", TextOrNull(finding.section)},
            {"field", TextOrNull(finding.Field() != nullptr ? finding.Field() : "")},
            {"requirement", rule.requirement},
            {"import", rule.effect},
            {"text", TextOrNull(finding.what)},
            {"count", finding.count},
            {"places", places}};
}

Json ImportJson(const inspect::FileReport& report) {
    if (!report.message || !report.message->delivery) return {};
    const inspect::Delivery& delivery = *report.message->delivery;
    return {{"rows", delivery.rows}, {"characters", delivery.characters}, {"tab_fields", delivery.tab_fields}};
}

const char* ReasonName(inspect::UnusedFont::Reason reason) {
    switch (reason) {
        case inspect::UnusedFont::Reason::kNotNamed:
            break;
        case inspect::UnusedFont::Reason::kName:
            return "name";
        case inspect::UnusedFont::Reason::kOtherFile:
            return "other file";
    }
    return "not named";
}

}  // namespace

std::string VerifyJson(const inspect::FileReport& report) {
    const inspect::FindingCounts counts = inspect::CountFindings(report);
    std::string line = JsonText({{"version", document::kJsonVersion},
                                 {"type", "file"},
                                 {"name", report.name},
                                 {"kind", inspect::KindName(report.kind)},
                                 {"verdict", VerdictName(report.verdict)},
                                 {"reason", TextOrNull(report.reason)},
                                 {"size", report.size},
                                 {"faults", counts.faults},
                                 {"notes", counts.notes},
                                 {"import", ImportJson(report)}});
    // One by one, since a file may have very many.
    line.back() = ',';
    line += "\"findings\":[";
    for (const inspect::Finding& finding : report.findings)
        line.append(&finding == &report.findings.front() ? "" : ",").append(JsonText(FindingJson(finding)));
    return line + "]}";
}

std::string UnreadableVerifyJson(const std::string& name, const std::string& reason) {
    return JsonText({{"version", document::kJsonVersion},
                     {"type", "file"},
                     {"name", name},
                     {"kind", nullptr},
                     {"verdict", "unreadable"},
                     {"reason", reason},
                     {"size", nullptr},
                     {"faults", 0},
                     {"notes", 0},
                     {"import", nullptr},
                     {"findings", Json::array()}});
}

std::string VerifySummaryJson(const VerifySummary& summary) {
    Json missing = Json::array(), unused = Json::array();
    for (const inspect::MissingFont& font : summary.missing_fonts) {
        missing.push_back({{"disk", font.disk},
                           {"number", font.number},
                           {"file", TextOrNull(font.file)},
                           {"message_count", font.message_count},
                           {"messages", font.messages}});
    }
    for (const inspect::UnusedFont& font : summary.unused_fonts)
        unused.push_back({{"disk", font.disk}, {"file", font.file}, {"reason", ReasonName(font.reason)}});
    return JsonText({{"version", document::kJsonVersion},
                     {"type", "summary"},
                     {"files", summary.Files()},
                     {"whole", summary.counts.whole},
                     {"readable", summary.counts.readable},
                     {"broken", summary.counts.broken},
                     {"foreign", summary.counts.foreign},
                     {"unreadable", summary.counts.unreadable},
                     {"faults", summary.counts.faults},
                     {"notes", summary.counts.notes},
                     {"missing_fonts", missing},
                     {"unused_fonts", unused},
                     {"unlisted", summary.unlisted}});
}

}  // namespace zel::cli
