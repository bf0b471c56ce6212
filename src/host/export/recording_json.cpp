#include "host/export/recording_json.h"

#include <string>

#include <nlohmann/json.hpp>

#include "base/sha256.h"
#include "host/document/document_reader.h"
#include "host/document/json_version.h"

namespace zel::exporter {

namespace {

using Json = nlohmann::ordered_json;

Json Fields(const library::Recording& recording) {
    Json fields = Json::array();
    for (const library::RecordedField& field : recording.fields) {
        fields.push_back({{"name", field.name},
                          {"left", field.left},
                          {"top", field.top},
                          {"right", field.right},
                          {"bottom", field.bottom}});
    }
    return fields;
}

Json Sources(const library::Recording& recording) {
    Json sources = Json::array();
    for (const library::SourceFile& file : recording.sources) {
        Json& source = sources.emplace_back(
            Json{{"path", file.path}, {"font_number", nullptr}, {"size", file.size}, {"sha256", nullptr}});
        if (file.font_number) source["font_number"] = *file.font_number;
        if (!file.sha256.empty()) source["sha256"] = file.sha256;
    }
    return sources;
}

Json PictureOf(const library::Recording& recording) {
    if (recording.picture.empty()) return nullptr;
    return {{"width", recording.width}, {"height", recording.height}, {"sha256", base::Sha256(recording.picture)}};
}

}  // namespace

Json RecordingJson(const library::Recording& recording) {
    return {{"version", document::kJsonVersion},
            {"number", recording.number},
            {"disk", recording.disk},
            {"kind", KindName(recording.kind)},
            {"recorded_at", recording.recorded_at},
            {"options", recording.options},
            {"lines", ActiveLines(recording.standard)},
            {"text", recording.text},
            {"fonts", recording.fonts},
            {"fields", Fields(recording)},
            {"warnings", recording.warnings},
            {"sources", Sources(recording)},
            {"picture", PictureOf(recording)},
            {"message", document::ParseDocument(recording.document)}};
}

const char* KindName(library::RecordingKind kind) noexcept {
    if (kind == library::RecordingKind::kRgbaObject) return "object";
    return kind == library::RecordingKind::kRgbaBackground ? "background" : "message";
}

}  // namespace zel::exporter
